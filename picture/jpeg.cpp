#include <cstddef>
#include <optional>
#include <string>

#define STBI_WRITE_NO_STDIO
#include <stb/stb_image_write.h>

#include "picture/photograph.h"

namespace warpline {

std::optional<std::string> JpegOf(const RgbImage& image, int quality) {
  if (image.Width < 1 || image.Height < 1) return std::nullopt;
  std::string bytes;
  const auto append = [](void* context, void* data, int size) {
    static_cast<std::string*>(context)->append(static_cast<const char*>(data),
                                               static_cast<std::size_t>(size));
  };
  const int written = stbi_write_jpg_to_func(append, &bytes, image.Width, image.Height, 3,
                                             image.Pixels.data(), quality);
  if (written == 0) return std::nullopt;
  return bytes;
}

}  // namespace warpline
