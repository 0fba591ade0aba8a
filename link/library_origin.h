#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace warpline {

enum class LibraryOrigin { kMissing, kMaker, kStandIn };

// Whose a library in a folder is, by its file and without loading it. name is without what the
// system adds to it.
LibraryOrigin OriginOf(const std::filesystem::path& folder, std::string_view name);

// A line for each of the two libraries, the same in every language: "Beamlink: stand-in".
std::string LibraryVersionText(const std::filesystem::path& folder);

}  // namespace warpline
