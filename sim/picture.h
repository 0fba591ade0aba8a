#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "core/register_set.h"

// What the projector throws: a test picture, warped by the registers.
//
// The panel works backwards: for the pixel in row y and column x it fetches the picture at
//   u = W/2 + (x - W/2) * q_h[y] / 32768,   v = H/2 + (y - H/2) * q_v[x] / 32768
// with q the rebuilt line scales of the row and of the column, and W, H the panel's size; positions
// are those of pixel centres. So the whole width of the picture fills W * 32768 / q_h[y] pixels of
// row y, centred, and its height H * 32768 / q_v[x] pixels of column x. What lies outside the
// picture is black; a line whose scale is not above 0 is black altogether. Shift, optical centre,
// linearity and extension registers do not move the picture here.

namespace warpline::sim {

struct RgbImage {
  int Width = 0;
  int Height = 0;
  std::vector<std::uint8_t> Pixels;  // rows from the top, three bytes a pixel

  const std::uint8_t* At(int x, int y) const {
    return Pixels.data() + (static_cast<std::size_t>(y) * static_cast<std::size_t>(Width) +
                            static_cast<std::size_t>(x)) *
                               3;
  }
};

// A black picture.
RgbImage BlackImage(PanelSize panel);

// The test picture as it is sent to the projector: cross-hatch, circles, centre cross and corner
// marks on a ground that is nowhere black, so that the picture's edge shows.
RgbImage TestPicture(PanelSize panel);

// The picture (at least 2 pixels each way) through the line scales of both axes, one per row and
// one per column. A pixel on the picture's edge is as bright as the share of it that the picture
// covers.
RgbImage WarpedPicture(const RgbImage& picture, const std::vector<std::int32_t>& row_scales,
                       const std::vector<std::int32_t>& column_scales);

// A picture of the panel's size through the panel's registers.
RgbImage PanelPicture(const RgbImage& picture, const RegisterSet& registers);

// The image as a PNG file's bytes; nothing when it cannot be encoded.
std::optional<std::string> PngOf(const RgbImage& image);

}  // namespace warpline::sim
