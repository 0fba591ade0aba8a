#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "picture/picture.h"

// Photographs as cameras and telephones write them.

namespace warpline {

// What a photograph may have in all, and must have each way, looked at before it is decoded.
inline constexpr std::int64_t kMostPhotographPixels = 100'000'000;
inline constexpr int kLeastPhotographSide = 320;

// Else the reason, PhotoSize.
bool IsPhotographSize(PanelSize size, NamedText& reason);

// The picture of a JPEG or PNG file's bytes, upright by the orientation that the file tells; what
// is transparent is black. Else nothing, and the reason: PhotoFormatUnknown, PhotoHeic, PhotoSize
// or PhotoDamaged.
std::optional<RgbImage> ImageOfPhotograph(std::string_view bytes, NamedText& reason);

// The picture turned and mirrored as an orientation of EXIF asks for: 1 as it is, 3 by half a turn,
// 6 by a quarter to the right, 8 by a quarter to the left, 2, 4, 5 and 7 these mirrored. As it is
// for any other number.
RgbImage Oriented(RgbImage image, int orientation);

// The image as a JPEG file's bytes, quality 1..100; nothing when it cannot be encoded.
std::optional<std::string> JpegOf(const RgbImage& image, int quality);

}  // namespace warpline
