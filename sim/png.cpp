#include <cstddef>
#include <optional>
#include <string>

#define STB_IMAGE_WRITE_IMPLEMENTATION
#define STB_IMAGE_WRITE_STATIC
#define STBI_WRITE_NO_STDIO
#include <stb/stb_image_write.h>

#include "sim/picture.h"

namespace warpline::sim {

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

}  // namespace warpline::sim
