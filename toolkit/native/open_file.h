#pragma once

#include <filesystem>
#include <functional>

namespace warpline {

// Hand a file to another program and do not wait for it. False when that failed at once; where it
// shows later that no program takes the file, failed is called by the event loop, while that runs.
bool OpenInTextEditor(const std::filesystem::path& file, const std::function<void()>& failed);
bool OpenInBrowser(const std::filesystem::path& page, const std::function<void()>& failed);

}  // namespace warpline
