#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#define STBI_WRITE_NO_STDIO
#include <stb/stb_image_write.h>

#define STBI_NO_STDIO
#include <stb/stb_image.h>

#include "picture/picture.h"

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
  const auto* data = reinterpret_cast<const stbi_uc*>(bytes.data());
  const int size = bytes.size() > INT_MAX ? 0 : static_cast<int>(bytes.size());
  int width = 0;
  int height = 0;
  int channels = 0;
  if (stbi_info_from_memory(data, size, &width, &height, &channels) == 0) {
    reason = {"NoPng"};
    return std::nullopt;
  }
  if (std::min(width, height) < 2 || std::int64_t{width} * height > kMostPicturePixels) {
    reason = {"PngSize",
              {std::to_string(width), std::to_string(height), std::to_string(kMostPicturePixels)}};
    return std::nullopt;
  }
  const std::unique_ptr<stbi_uc, void (*)(void*)> pixels(
      stbi_load_from_memory(data, size, &width, &height, &channels, 4), stbi_image_free);
  // The decoder's own reason may be missing, or that of an older picture.
  if (!pixels) {
    reason = {"PngDamaged"};
    return std::nullopt;
  }
  RgbImage image = BlackImage({width, height});
  for (std::size_t i = 0; i < image.Pixels.size(); ++i) {
    const stbi_uc* pixel = pixels.get() + i / 3 * 4;
    image.Pixels[i] = static_cast<std::uint8_t>((pixel[i % 3] * pixel[3] + 127) / 255);
  }
  return image;
}

}  // namespace warpline
