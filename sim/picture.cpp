#include "sim/picture.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "model/registers.h"

namespace warpline::sim {
namespace {

using Colour = std::array<double, 3>;

constexpr Colour kGround{40, 48, 72};
constexpr Colour kHatch{150, 160, 180};
constexpr Colour kCircle{255, 210, 60};
constexpr Colour kCross{255, 80, 80};
constexpr Colour kMark{255, 255, 255};

constexpr int kHatchCells = 16;       // across the panel's width
constexpr int kMaxSamples = 4;        // per axis and pixel, where the picture shrinks
constexpr double kHalfLine = 1.0;     // half the width of the pattern's lines, pixels
constexpr double kMarkLength = 0.06;  // of the panel's height

// How much of a pixel a line covers whose middle is that far away.
double Coverage(double distance) {
  return std::clamp(kHalfLine + 0.5 - distance, 0.0, 1.0);
}

void Blend(Colour& colour, const Colour& over, double share) {
  for (std::size_t i = 0; i < colour.size(); ++i) colour[i] += (over[i] - colour[i]) * share;
}

double DistanceToGrid(double value, double step) {
  return std::abs(value - std::round(value / step) * step);
}

// The pattern around the panel's centre: dx and dy from the centre, half sizes w and h.
Colour PatternAt(double dx, double dy, double w, double h) {
  const double step = 2 * w / kHatchCells;
  const double radius = std::hypot(dx, dy);
  const double corner_radius = std::hypot(std::abs(dx) - (w - h / 3), std::abs(dy) - (h - h / 3));
  Colour colour = kGround;
  Blend(colour, kHatch,
        std::max(Coverage(DistanceToGrid(dx, step)), Coverage(DistanceToGrid(dy, step))));
  Blend(colour, kCircle, Coverage(std::abs(radius - 0.9 * h)));
  Blend(colour, kCircle, Coverage(std::abs(corner_radius - 0.25 * h)));
  if (std::max(std::abs(dx), std::abs(dy)) < 0.2 * h) {
    Blend(colour, kCross, Coverage(std::min(std::abs(dx), std::abs(dy)) - 1));
  }
  const double from_side = w - std::abs(dx);
  const double from_top = h - std::abs(dy);
  if (std::max(from_side, from_top) < 2 * kMarkLength * h) {
    Blend(colour, kMark, Coverage(std::min(from_side, from_top) - 2 * kHalfLine));
  }
  return colour;
}

void PutPixel(RgbImage& image, std::size_t pixel, const Colour& colour) {
  for (std::size_t i = 0; i < 3; ++i) {
    const int doubled = static_cast<int>(2 * colour[i]);  // rounds without a library call
    image.Pixels[pixel * 3 + i] = static_cast<std::uint8_t>((doubled + 1) / 2);
  }
}

// Adds the picture's colour at a position, interpolated between pixel centres; beyond the outermost
// centres the edge's colour counts.
void AddSample(const RgbImage& image, double u, double v, double weight, Colour& sum) {
  const double left = std::clamp(u - 0.5, 0.0, image.Width - 1.0);
  const double top = std::clamp(v - 0.5, 0.0, image.Height - 1.0);
  const int x = std::min(static_cast<int>(left), image.Width - 2);
  const int y = std::min(static_cast<int>(top), image.Height - 2);
  const double fx = left - x;
  const double fy = top - y;
  const std::uint8_t* above = image.At(x, y);
  const std::uint8_t* below = image.At(x, y + 1);
  for (std::size_t i = 0; i < sum.size(); ++i) {
    sum[i] += weight * ((above[i] * (1 - fx) + above[i + 3] * fx) * (1 - fy) +
                        (below[i] * (1 - fx) + below[i + 3] * fx) * fy);
  }
}

// A row or a column of the panel: its scale (1: full length), how much of the panel's side it then
// covers, in pixels, and how many samples a pixel on it takes along it.
struct PanelLine {
  double scale;
  double size;
  int samples;
};

// A scale of 0 or below leaves nothing of a line.
std::vector<PanelLine> PanelLines(const std::vector<std::int32_t>& scales, int length) {
  std::vector<PanelLine> lines;
  lines.reserve(scales.size());
  for (const std::int32_t value : scales) {
    const double scale = value / double{kUnitScale};
    const double samples = std::clamp(std::round(scale), 1.0, double{kMaxSamples});
    lines.push_back({scale, value > 0 ? length / scale : 0.0, static_cast<int>(samples)});
  }
  return lines;
}

// How much of pixel i lies on a line of that size, centred on a panel side of that length.
double Overlap(int i, double length, double size) {
  const double start = std::max<double>(i, (length - size) / 2);
  const double end = std::min<double>(i + 1, (length + size) / 2);
  return std::max(0.0, end - start);
}

// Where sample k within pixel i of a line fetches: around the centre, by the line's scale.
double Fetched(int i, int k, const PanelLine& line, double length) {
  const double position = i + (k + 0.5) / line.samples;
  return length / 2 + (position - length / 2) * line.scale;
}

// The mean of the samples within a pixel, as bright as the picture's share of the pixel.
Colour PixelColour(const RgbImage& picture, int x, int y, const PanelLine& row,
                   const PanelLine& column, double share) {
  const double weight = share / (row.samples * column.samples);
  Colour sum{};
  for (int j = 0; j < column.samples; ++j) {
    const double v = Fetched(y, j, column, picture.Height);
    for (int i = 0; i < row.samples; ++i) {
      AddSample(picture, Fetched(x, i, row, picture.Width), v, weight, sum);
    }
  }
  return sum;
}

}  // namespace

RgbImage BlackImage(PanelSize panel) {
  const auto pixels =
      static_cast<std::size_t>(panel.Width) * static_cast<std::size_t>(panel.Height);
  return {panel.Width, panel.Height, std::vector<std::uint8_t>(pixels * 3)};
}

RgbImage TestPicture(PanelSize panel) {
  RgbImage image = BlackImage(panel);
  const double w = panel.Width / 2.0;
  const double h = panel.Height / 2.0;
  std::size_t pixel = 0;
  for (int y = 0; y < panel.Height; ++y) {
    for (int x = 0; x < panel.Width; ++x) {
      PutPixel(image, pixel++, PatternAt(x + 0.5 - w, y + 0.5 - h, w, h));
    }
  }
  return image;
}

RgbImage WarpedPicture(const RgbImage& picture, const std::vector<std::int32_t>& row_scales,
                       const std::vector<std::int32_t>& column_scales) {
  RgbImage image = BlackImage({picture.Width, picture.Height});
  const std::vector<PanelLine> rows = PanelLines(row_scales, image.Width);
  const std::vector<PanelLine> columns = PanelLines(column_scales, image.Height);
  std::size_t pixel = 0;
  for (int y = 0; y < image.Height; ++y) {
    const PanelLine& row = rows[static_cast<std::size_t>(y)];
    for (int x = 0; x < image.Width; ++x, ++pixel) {
      const PanelLine& column = columns[static_cast<std::size_t>(x)];
      const double share =
          Overlap(x, image.Width, row.size) * Overlap(y, image.Height, column.size);
      if (share > 0) PutPixel(image, pixel, PixelColour(picture, x, y, row, column, share));
    }
  }
  return image;
}

RgbImage PanelPicture(const RgbImage& picture, const RegisterSet& registers) {
  const PanelSize panel{picture.Width, picture.Height};
  return WarpedPicture(picture,
                       RebuildLineScales(registers[kHorizontal], LineCount(panel, kHorizontal)),
                       RebuildLineScales(registers[kVertical], LineCount(panel, kVertical)));
}

}  // namespace warpline::sim
