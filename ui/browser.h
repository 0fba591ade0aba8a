#pragma once

#include <filesystem>

namespace warpline {

// Opens a page of this machine in the user's browser and does not wait for it. False when there is
// none to open it.
bool OpenInBrowser(const std::filesystem::path& page);

}  // namespace warpline
