#include "picture/photograph.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>
#include <string>
#include <utility>

#include "picture/exif.h"
#include "picture/stb_decoder.h"

namespace warpline {
namespace {

using namespace std::string_view_literals;

constexpr std::string_view kJpegStart = "\xFF\xD8\xFF"sv;

// The box at the file's beginning names what the file may be read as, four letters each.
bool IsHeic(std::string_view bytes) {
  static constexpr std::array kBrands{"heic"sv, "heix"sv, "heim"sv, "heis"sv, "hevc"sv, "hevx"sv,
                                      "hevm"sv, "hevs"sv, "mif1"sv, "msf1"sv, "avif"sv};
  constexpr std::size_t kMostBrands = 32;
  if (bytes.size() < 12 || bytes.substr(4, 4) != "ftyp") return false;
  const std::size_t length = std::min<std::size_t>(
      {bytes.size(), static_cast<std::uint8_t>(bytes[3]), std::size_t{4} * kMostBrands});
  for (std::size_t at = 8; at + 4 <= std::max<std::size_t>(length, 12); at += 4) {
    if (std::ranges::find(kBrands, bytes.substr(at, 4)) != kBrands.end()) return true;
  }
  return false;
}

// Which pixel of the picture shows at (x, y) of the turned one: origin, and steps along both.
struct Walk {
  std::ptrdiff_t start;
  std::ptrdiff_t across;
  std::ptrdiff_t down;
};

Walk WalkOf(int orientation, std::ptrdiff_t width, std::ptrdiff_t height) {
  const std::ptrdiff_t right = width - 1;
  const std::ptrdiff_t bottom = (height - 1) * width;
  switch (orientation) {
    case 2:
      return {right, -1, width};
    case 3:
      return {bottom + right, -1, -width};
    case 4:
      return {bottom, 1, -width};
    case 5:
      return {0, width, 1};
    case 6:
      return {bottom, -width, 1};
    case 7:
      return {bottom + right, -width, -1};
    case 8:
      return {right, width, -1};
    default:
      return {0, 1, width};
  }
}

}  // namespace

RgbImage Oriented(RgbImage image, int orientation) {
  if (orientation < 2 || orientation > 8) return image;
  const Walk walk = WalkOf(orientation, image.Width, image.Height);
  const bool lies = orientation >= 5;
  RgbImage turned = BlackImage(lies ? PanelSize{image.Height, image.Width}
                                    : PanelSize{image.Width, image.Height});
  std::uint8_t* pixel = turned.Pixels.data();
  for (int y = 0; y < turned.Height; ++y) {
    const std::uint8_t* from = image.Pixels.data() + (walk.start + walk.down * y) * 3;
    for (int x = 0; x < turned.Width; ++x, pixel += 3) {
      std::copy_n(from + walk.across * x * 3, 3, pixel);
    }
  }
  return turned;
}

bool IsPhotographSize(PanelSize size, NamedText& reason) {
  if (std::min(size.Width, size.Height) >= kLeastPhotographSide &&
      std::int64_t{size.Width} * size.Height <= kMostPhotographPixels) {
    return true;
  }
  reason = {"PhotoSize",
            {std::to_string(size.Width), std::to_string(size.Height),
             std::to_string(kLeastPhotographSide)}};
  return false;
}

std::optional<RgbImage> ImageOfPhotograph(std::string_view bytes, NamedText& reason) {
  if (IsHeic(bytes)) {
    reason = {"PhotoHeic"};
    return std::nullopt;
  }
  std::optional<PanelSize> size;
  if (bytes.starts_with(kJpegStart) || IsPng(bytes)) size = SizeOfPicture(bytes);
  if (!size) {
    reason = {"PhotoFormatUnknown"};
    return std::nullopt;
  }
  if (!IsPhotographSize(*size, reason)) return std::nullopt;
  std::optional<RgbImage> image = DecodedPicture(bytes);
  if (!image) {
    reason = {"PhotoDamaged"};
    return std::nullopt;
  }
  return Oriented(*std::move(image), OrientationOf(bytes));
}

}  // namespace warpline
