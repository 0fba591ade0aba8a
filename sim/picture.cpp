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
    image.Pixels[pixel * 3 + i] = static_cast<std::uint8_t>(std::lround(colour[i]));
  }
}

// The picture at a position, pixel centres at whole numbers plus a half; black outside.
class Sampler {
 public:
  explicit Sampler(const RgbImage& image) : image_(image) {}

  void Add(double u, double v, double weight, Colour& sum) const {
    if (!(u > -1 && v > -1 && u < image_.Width + 1 && v < image_.Height + 1)) return;
    const int x = static_cast<int>(std::floor(u - 0.5));
    const int y = static_cast<int>(std::floor(v - 0.5));
    const double fx = u - 0.5 - x;
    const double fy = v - 0.5 - y;
    AddPixel(x, y, weight * (1 - fx) * (1 - fy), sum);
    AddPixel(x + 1, y, weight * fx * (1 - fy), sum);
    AddPixel(x, y + 1, weight * (1 - fx) * fy, sum);
    AddPixel(x + 1, y + 1, weight * fx * fy, sum);
  }

 private:
  void AddPixel(int x, int y, double weight, Colour& sum) const {
    if (x < 0 || y < 0 || x >= image_.Width || y >= image_.Height) return;
    const std::uint8_t* pixel = image_.At(x, y);
    for (std::size_t i = 0; i < 3; ++i) sum[i] += weight * pixel[i];
  }

  const RgbImage& image_;
};

int SampleCount(double scale) {
  return static_cast<int>(std::clamp(std::ceil(scale - 0.001), 1.0, double{kMaxSamples}));
}

// Where sample k of n within pixel i fetches: around the centre, by the line's scale.
double Fetched(int i, int k, int n, double size, double scale) {
  const double position = i + (k + 0.5) / n;
  return size / 2 + (position - size / 2) * scale;
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
  const Sampler sampler(picture);
  std::size_t pixel = 0;
  for (int y = 0; y < image.Height; ++y) {
    const double row = row_scales[static_cast<std::size_t>(y)] / double{kUnitScale};
    for (int x = 0; x < image.Width; ++x, ++pixel) {
      const double column = column_scales[static_cast<std::size_t>(x)] / double{kUnitScale};
      if (row <= 0 || column <= 0) continue;
      const int across = SampleCount(row);
      const int down = SampleCount(column);
      Colour sum{};
      for (int j = 0; j < down; ++j) {
        const double v = Fetched(y, j, down, image.Height, column);
        for (int i = 0; i < across; ++i) {
          sampler.Add(Fetched(x, i, across, image.Width, row), v, 1.0 / (across * down), sum);
        }
      }
      PutPixel(image, pixel, sum);
    }
  }
  return image;
}

RgbImage PanelPicture(const RegisterSet& registers, PanelSize panel) {
  return WarpedPicture(TestPicture(panel),
                       RebuildLineScales(registers[kHorizontal], LineCount(panel, kHorizontal)),
                       RebuildLineScales(registers[kVertical], LineCount(panel, kVertical)));
}

}  // namespace warpline::sim
