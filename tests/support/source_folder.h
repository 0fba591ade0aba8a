#pragma once

#include <filesystem>

namespace warpline {

// The root of the tree that this program was built from.
const std::filesystem::path& SourceFolder();

}  // namespace warpline
