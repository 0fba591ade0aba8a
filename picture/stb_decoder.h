#pragma once

#include <optional>
#include <string_view>

#include "picture/picture.h"

// Pictures out of the bytes of JPEG and PNG files, by the picture library.

namespace warpline {

bool IsPng(std::string_view bytes);

// The size that a file's header tells; nothing when it is of neither kind.
std::optional<PanelSize> SizeOfPicture(std::string_view bytes);

// The picture itself, transparency on black; nothing when it is damaged.
std::optional<RgbImage> DecodedPicture(std::string_view bytes);

}  // namespace warpline
