#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/texts.h"
#include "picture/panel_lines.h"

// What the projector throws: a picture, warped by the registers. The panel works backwards: the
// pixel in row y and column x shows the picture at u = what row y shows at x, v = what column x
// shows at y (see panel_lines.h). What lies outside the picture is black.

namespace warpline {

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

// The picture (at least 2 pixels each way) through the lines of both axes, one per row and one per
// column. A pixel on the picture's edge is as bright as the share of it that the picture covers.
RgbImage WarpedPicture(const RgbImage& picture, const std::vector<PanelLine>& rows,
                       const std::vector<PanelLine>& columns);

// A picture of the panel's size through the panel's registers.
RgbImage PanelPicture(const RgbImage& picture, const RegisterSet& registers);

// Adds to a colour (red, green, blue) the picture's colour at a position times the weight. Between
// pixel centres it is interpolated; beyond the outermost centres the edge's colour counts.
void AddSample(const RgbImage& image, double u, double v, double weight, double (&sum)[3]);

// The picture in another size, both at least 2 pixels each way.
RgbImage Resized(const RgbImage& picture, PanelSize size);

// The image as a PNG file's bytes; nothing when it cannot be encoded.
std::optional<std::string> PngOf(const RgbImage& image);

// What a picture may have in all, looked at before anything is decoded.
inline constexpr std::int64_t kMostPicturePixels = 64'000'000;

// The picture of a PNG file's bytes, 2 pixels each way to kMostPicturePixels in all, transparency
// on black. Else nothing, and the reason. Every picture that is read comes in by here.
std::optional<RgbImage> ImageOfPng(std::string_view bytes, NamedText& reason);

}  // namespace warpline
