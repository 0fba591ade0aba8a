#pragma once

#include <string_view>

namespace warpline {

// Stands in the file of every stand-in for a library of the maker's, and in none of the maker's.
inline constexpr std::string_view kStandInMark =
    "Warpline Tool stand-in for a library of the maker's";

}  // namespace warpline
