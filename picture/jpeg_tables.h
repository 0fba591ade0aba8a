#pragma once

#include <string_view>

namespace warpline {

// False when one of a JPEG file's tables has codes for more symbols than there are. The picture
// library would write beyond its own table for such a one.
bool CodeTablesFit(std::string_view file);

}  // namespace warpline
