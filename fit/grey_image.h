#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "picture/picture.h"

// A photograph without its colours. Positions are pixels from the left and top edge, a pixel's
// centre at a half.

namespace warpline {

struct GreyImage {
  int Width = 0;
  int Height = 0;
  std::vector<std::uint8_t> Pixels;  // rows from the top

  const std::uint8_t* Row(int y) const {
    return Pixels.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(Width);
  }
};

GreyImage GreyOf(const RgbImage& photo);

// Half as large each way, each pixel the mean of four; of an image of 2 pixels each way or more.
GreyImage Halved(const GreyImage& image);

// The light at a position, interpolated; outside, that of the edge. 2 pixels each way or more.
double LightAt(const GreyImage& image, double x, double y);

}  // namespace warpline
