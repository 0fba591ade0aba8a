#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#define STBI_WRITE_NO_STDIO
#include <stb/stb_image_write.h>

#include "picture/picture.h"
#include "picture/stb_decoder.h"

namespace warpline {

// A caller waits while this runs, so speed counts for more than the last tenth of the size: a quick
// search, and one filter (each byte less its left neighbour) instead of the best of five per row.
std::optional<std::string> PngOf(const RgbImage& image) {
  if (image.Width < 1 || image.Height < 1) return std::nullopt;
  stbi_write_png_compression_level = 5;
  stbi_write_force_png_filter = 1;
  std::string bytes;
  const auto append = [](void* context, void* data, int size) {
    static_cast<std::string*>(context)->append(static_cast<const char*>(data),
                                               static_cast<std::size_t>(size));
  };
  const int written = stbi_write_png_to_func(append, &bytes, image.Width, image.Height, 3,
                                             image.Pixels.data(), image.Width * 3);
  if (written == 0) return std::nullopt;
  return bytes;
}

std::optional<RgbImage> ImageOfPng(std::string_view bytes, NamedText& reason) {
  std::optional<PanelSize> size;
  if (IsPng(bytes)) size = SizeOfPicture(bytes);
  if (!size) {
    reason = {"NoPng"};
    return std::nullopt;
  }
  const auto [width, height] = *size;
  if (std::min(width, height) < 2 || std::int64_t{width} * height > kMostPicturePixels) {
    reason = {"PngSize",
              {std::to_string(width), std::to_string(height), std::to_string(kMostPicturePixels)}};
    return std::nullopt;
  }
  std::optional<RgbImage> image = DecodedPicture(bytes);
  if (!image) reason = {"PngDamaged"};
  return image;
}

}  // namespace warpline
