#include "picture/stb_decoder.h"

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#define STBI_NO_STDIO
#include <stb/stb_image.h>

#include "picture/jpeg_tables.h"

namespace warpline {
namespace {

// What the library is given; a size of 0 for what is beyond its numbers.
struct Source {
  explicit Source(std::string_view bytes)
      : data(reinterpret_cast<const stbi_uc*>(bytes.data())),
        size(bytes.size() > INT_MAX ? 0 : static_cast<int>(bytes.size())) {}

  const stbi_uc* data;
  int size;
};

// The library tells no sizes of PNG pictures that are too large for itself. Its first chunk begins
// with both numbers.
bool SizeOfPng(std::string_view bytes, PanelSize& size) {
  if (bytes.size() < 24 || bytes.substr(12, 4) != "IHDR") return false;
  std::uint64_t numbers = 0;
  for (const char byte : bytes.substr(16, 8)) numbers = numbers << 8 | static_cast<stbi_uc>(byte);
  const std::uint64_t width = numbers >> 32;
  const std::uint64_t height = numbers & UINT32_MAX;
  if (width > INT_MAX || height > INT_MAX) return false;
  size = {static_cast<int>(width), static_cast<int>(height)};
  return true;
}

// The library makes room for what a chunk claims to hold before it looks whether it is there.
bool ChunksFit(std::string_view png) {
  constexpr std::size_t kAroundData = 12;  // length and name before it, a check sum behind it
  for (std::string_view rest = png.substr(8); rest.size() >= kAroundData;) {
    std::size_t length = 0;
    for (const char byte : rest.substr(0, 4)) length = length << 8 | static_cast<stbi_uc>(byte);
    if (length > rest.size() - kAroundData) return false;
    if (rest.substr(4, 4) == "IEND") return true;  // what follows is none of the picture's
    rest.remove_prefix(kAroundData + length);
  }
  return true;
}

// The library decodes by whatever lies in its memory when a JPEG never says what a table holds that
// it uses. So all tables are said before its own ones: a single code each, and divisors of 1.
std::string WithTablesFirst(std::string_view jpeg) {
  using namespace std::string_view_literals;
  constexpr std::size_t kStart = 2;
  std::string whole(jpeg.substr(0, kStart));
  whole += "\xFF\xDB\x01\x06"sv;
  for (const char table : "\x00\x01\x02\x03"sv) whole += table + std::string(64, '\1');
  whole += "\xFF\xC4\x00\x92"sv;
  for (const char table : "\x00\x01\x02\x03\x10\x11\x12\x13"sv) {
    whole += table + ('\1' + std::string(16, '\0'));  // one code of one bit, for the symbol 0
  }
  return whole += jpeg.substr(kStart);
}

}  // namespace

bool IsPng(std::string_view bytes) {
  return bytes.starts_with("\x89PNG\r\n\x1A\n");
}

std::optional<PanelSize> SizeOfPicture(std::string_view bytes) {
  const Source source(bytes);
  PanelSize size{};
  if (IsPng(bytes) && SizeOfPng(bytes, size)) return size;
  int channels = 0;
  if (!IsPng(bytes) && !CodeTablesFit(bytes)) return std::nullopt;
  if (stbi_info_from_memory(source.data, source.size, &size.Width, &size.Height, &channels) == 0) {
    return std::nullopt;
  }
  return size;
}

// The library's own reason for a failure may be missing, or that of an older picture.
std::optional<RgbImage> DecodedPicture(std::string_view bytes) {
  int width = 0;
  int height = 0;
  int channels = 0;
  const bool opaque = !IsPng(bytes);
  if (opaque ? !CodeTablesFit(bytes) : !ChunksFit(bytes)) return std::nullopt;
  const std::string jpeg = opaque ? WithTablesFirst(bytes) : "";
  const Source source(opaque ? jpeg : bytes);
  const std::unique_ptr<stbi_uc, void (*)(void*)> pixels(
      stbi_load_from_memory(source.data, source.size, &width, &height, &channels, opaque ? 3 : 4),
      stbi_image_free);
  if (!pixels) return std::nullopt;
  RgbImage image = BlackImage({width, height});
  if (opaque) {
    std::copy_n(pixels.get(), image.Pixels.size(), image.Pixels.begin());
    return image;
  }
  for (std::size_t i = 0; i < image.Pixels.size(); ++i) {
    const stbi_uc* pixel = pixels.get() + i / 3 * 4;
    image.Pixels[i] = static_cast<std::uint8_t>((pixel[i % 3] * pixel[3] + 127) / 255);
  }
  return image;
}

}  // namespace warpline
