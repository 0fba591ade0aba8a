#include "fit/grey_image.h"

#include <algorithm>

#include "picture/rows.h"

namespace warpline {
namespace {

GreyImage Empty(int width, int height) {
  const auto pixels = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
  return {width, height, std::vector<std::uint8_t>(pixels)};
}

std::uint8_t* RowOf(GreyImage& image, int y) {
  return image.Pixels.data() + (image.Row(y) - image.Pixels.data());
}

}  // namespace

GreyImage GreyOf(const RgbImage& photo) {
  GreyImage image = Empty(photo.Width, photo.Height);
  ForEachRow(image.Height, [&](int y) {
    const std::uint8_t* from = photo.At(0, y);
    std::uint8_t* const to = RowOf(image, y);
    for (int x = 0; x < image.Width; ++x, from += 3) {
      to[x] = static_cast<std::uint8_t>((from[0] + 2 * from[1] + from[2] + 2) / 4);
    }
  });
  return image;
}

GreyImage Halved(const GreyImage& image) {
  GreyImage half = Empty(image.Width / 2, image.Height / 2);
  ForEachRow(half.Height, [&](int y) {
    const std::uint8_t* const above = image.Row(2 * y);
    const std::uint8_t* const below = image.Row(2 * y + 1);
    std::uint8_t* const to = RowOf(half, y);
    for (std::ptrdiff_t x = 0; x < half.Width; ++x) {
      const int sum = above[2 * x] + above[2 * x + 1] + below[2 * x] + below[2 * x + 1];
      to[x] = static_cast<std::uint8_t>((sum + 2) / 4);
    }
  });
  return half;
}

double LightAt(const GreyImage& image, double x, double y) {
  const double left = std::clamp(x - 0.5, 0.0, image.Width - 1.0);
  const double top = std::clamp(y - 0.5, 0.0, image.Height - 1.0);
  const int column = std::min(static_cast<int>(left), image.Width - 2);
  const int row = std::min(static_cast<int>(top), image.Height - 2);
  const double across = left - column;
  const double down = top - row;
  const std::uint8_t* const above = image.Row(row) + column;
  const std::uint8_t* const below = image.Row(row + 1) + column;
  return (above[0] * (1 - across) + above[1] * across) * (1 - down) +
         (below[0] * (1 - across) + below[1] * across) * down;
}

}  // namespace warpline
