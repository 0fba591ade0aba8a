#pragma once

#include <filesystem>
#include <string_view>
#include <system_error>

namespace warpline {

// ReplaceFileContents on file systems without nameless files; folder is that of the path.
std::error_code ReplaceByNamedTemporary(const std::filesystem::path& path,
                                        const std::filesystem::path& folder,
                                        std::string_view bytes);

}  // namespace warpline
