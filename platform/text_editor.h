#pragma once

#include <filesystem>

namespace warpline {

// Opens a text file in the system's text editor and does not wait for it. False when that failed.
bool OpenInTextEditor(const std::filesystem::path& file);

}  // namespace warpline
