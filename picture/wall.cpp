#include "picture/wall.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "picture/rows.h"

namespace warpline {
namespace {

constexpr double kShownShare = 0.8;  // of the image, by a flat wall's picture
constexpr double kGroundLight = 44;

// How far a round screen of that curvature lies behind its foremost (or before its rearmost) point.
double Bulge(double squared, double curvature) {
  const double inside = 1 - squared * curvature * curvature;
  return inside < 0 ? std::nan("") : (1 - std::sqrt(inside)) / curvature;
}

double Behind(const Wall& wall, double x, double y) {
  const double slope = std::tan(wall.Curvature * std::numbers::pi / 4);
  switch (wall.Shape) {
    case WallShape::kFlat:
      return 0;
    case WallShape::kCylinder:
      return Bulge(x * x, wall.Curvature);
    case WallShape::kCylinderUpright:
      return Bulge(y * y, wall.Curvature);
    case WallShape::kSphere:
      return Bulge(x * x + y * y, wall.Curvature);
    case WallShape::kCorner:
      return std::abs(x) * slope;
    case WallShape::kCeiling:
      return std::abs(y) * slope;
  }
  return 0;
}

// Rows of the panel above its lens axis.
double AxisRow(LensAxis axis, PanelSize panel) {
  return panel.Height * (axis == LensAxis::kTop ? 0.0 : axis == LensAxis::kMiddle ? 0.5 : 1.0);
}

// What the wall without a picture looks like: darker where it turns away.
double GroundLight(const Wall& wall, double x, double y, double depth) {
  static constexpr double kStep = 0.01;
  const double across = WallDepth(wall, x + kStep, y) - depth;
  const double down = WallDepth(wall, x, y + kStep) - depth;
  return kGroundLight / std::hypot(1.0, across / kStep, down / kStep) *
         (1 - 0.25 * std::clamp(across / kStep, -1.0, 1.0));
}

bool PositionAtDepth(const Wall& wall, PanelSize panel, double x, double y, double depth,
                     std::array<double, 2>& position) {
  if (depth <= 0) return false;
  const double focal = kThrowRatio * panel.Width;
  position = {panel.Width / 2.0 + x * focal / depth, AxisRow(wall.Axis, panel) + y * focal / depth};
  return position[0] >= 0 && position[1] >= 0 && position[0] <= panel.Width &&
         position[1] <= panel.Height;
}

}  // namespace

double WallDepth(const Wall& wall, double x, double y) {
  const double behind = wall.Curvature == 0 ? 0 : Behind(wall, x, y);
  const double depth = wall.Distance + behind;
  return depth > 0 ? depth : 0;
}

bool PanelPositionAt(const Wall& wall, PanelSize panel, double x, double y,
                     std::array<double, 2>& position) {
  return PositionAtDepth(wall, panel, x, y, WallDepth(wall, x, y), position);
}

RgbImage WallPicture(const RgbImage& panel_picture, const Wall& wall, PanelSize size) {
  const PanelSize panel{panel_picture.Width, panel_picture.Height};
  const double width = wall.Distance / kThrowRatio;
  const double height = width * panel.Height / panel.Width;
  const double metres =
      std::max(width / size.Width, height / size.Height) / kShownShare;  // an image pixel
  const double middle = height * (0.5 - AxisRow(wall.Axis, panel) / panel.Height);
  RgbImage image = BlackImage(size);
  ForEachRow(size.Height, [&](int row) {
    std::uint8_t* pixel = image.Pixels.data() + (image.At(0, row) - image.Pixels.data());
    const double y = (row + 0.5 - size.Height / 2.0) * metres + middle;
    for (int column = 0; column < size.Width; ++column, pixel += 3) {
      const double x = (column + 0.5 - size.Width / 2.0) * metres;
      double sum[3]{};
      const double depth = WallDepth(wall, x, y);
      if (depth > 0) std::ranges::fill(sum, GroundLight(wall, x, y, depth));
      // Four samples a pixel keep thin lines whole where the picture is shown smaller; within a
      // pixel the wall is as good as flat.
      for (int i = 0; i < 4; ++i) {
        std::array<double, 2> at{};
        const double dx = (i % 2 == 0 ? -0.25 : 0.25) * metres;
        const double dy = (i < 2 ? -0.25 : 0.25) * metres;
        if (PositionAtDepth(wall, panel, x + dx, y + dy, depth, at)) {
          AddSample(panel_picture, at[0], at[1], 0.25, sum);
        }
      }
      for (int i = 0; i < 3; ++i) {
        pixel[i] = static_cast<std::uint8_t>(std::min(sum[i] + 0.5, 255.0));
      }
    }
  });
  return image;
}

}  // namespace warpline
