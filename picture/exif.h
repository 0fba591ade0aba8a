#pragma once

#include <string_view>

namespace warpline {

// The orientation that a JPEG or PNG file tells, 1..8 as EXIF counts them; 1 when it tells none, or
// one that is damaged.
int OrientationOf(std::string_view file);

}  // namespace warpline
