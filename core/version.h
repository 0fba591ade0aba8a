#pragma once

#include <string_view>

namespace warpline {

// The tool's version, as its title and its recordings tell it.
inline constexpr std::string_view kToolVersion = "3.0";

}  // namespace warpline
