#include "picture/wall.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

#include "core/conversions.h"
#include "picture/rows.h"

namespace warpline {
namespace {

constexpr double kShownShare = 0.8;  // of the image, by a flat wall's picture
constexpr double kGroundLight = 44;

constexpr std::array<std::string_view, kWallShapeCount> kShapeWords{
    "flat", "cylinder", "bow", "sphere", "corner", "ceiling"};
constexpr std::array<std::string_view, 3> kAxisWords{"top", "middle", "bottom"};

template <typename Enum, std::size_t kCount>
bool ReadWord(std::string_view text, const std::array<std::string_view, kCount>& words,
              Enum& value) {
  const auto found = std::ranges::find(words, text);
  if (found == words.end()) return false;
  value = static_cast<Enum>(found - words.begin());
  return true;
}

// How far a round screen of that curvature lies behind its foremost (or before its rearmost) point.
double Bulge(double squared, double curvature) {
  const double inside = 1 - squared * curvature * curvature;
  return inside < 0 ? std::nan("") : (1 - std::sqrt(inside)) / curvature;
}

// Of each of the two walls of a corner.
double SlopeOf(const Wall& wall) {
  return std::tan(wall.Curvature * std::numbers::pi / 4);
}

double Behind(const Wall& wall, double x, double y) {
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
      return std::abs(x) * SlopeOf(wall);
    case WallShape::kCeiling:
      return std::abs(y) * SlopeOf(wall);
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
  position = PanelPositionThrough(wall, panel, x, y, depth);
  return position[0] >= 0 && position[1] >= 0 && position[0] <= panel.Width &&
         position[1] <= panel.Height;
}

// What part of the wall an image shows.
struct View {
  double Metres;  // an image pixel
  double Middle;  // the height of the image's middle, metres below the lens's axis
};

View ViewOf(const Wall& wall, PanelSize panel, PanelSize size) {
  const double width = wall.Distance / kThrowRatio;
  const double height = width * panel.Height / panel.Width;
  return {std::max(width / size.Width, height / size.Height) / kShownShare,
          height * (0.5 - AxisRow(wall.Axis, panel) / panel.Height)};
}

// Metres from the lens's axis.
struct Edges {
  double Left = -std::numeric_limits<double>::infinity();
  double Right = std::numeric_limits<double>::infinity();
  double Top = Left;
  double Bottom = Right;
};

// The largest upright rectangle inside the uncorrected picture.
std::optional<Edges> StraightEdges(const Wall& wall, PanelSize panel) {
  constexpr int kParts = 64;  // of an edge
  Edges edges;
  for (int i = 0; i <= kParts; ++i) {
    const double column = static_cast<double>(panel.Width) * i / kParts;
    const double row = static_cast<double>(panel.Height) * i / kParts;
    const auto left = WallPlaceOf(wall, panel, 0, row);
    const auto right = WallPlaceOf(wall, panel, panel.Width, row);
    const auto top = WallPlaceOf(wall, panel, column, 0);
    const auto bottom = WallPlaceOf(wall, panel, column, panel.Height);
    if (!left || !right || !top || !bottom) return std::nullopt;
    edges = {std::max(edges.Left, (*left)[0]), std::min(edges.Right, (*right)[0]),
             std::max(edges.Top, (*top)[1]), std::min(edges.Bottom, (*bottom)[1])};
  }
  return edges;
}

// Half of what was there shines through.
void Tint(RgbImage& image, int x, int y) {
  static constexpr std::array kColour{96, 255, 160};
  if (x < 0 || y < 0 || x >= image.Width || y >= image.Height) return;
  std::uint8_t* const pixel = image.Pixels.data() + (image.At(x, y) - image.Pixels.data());
  for (std::size_t i = 0; i < kColour.size(); ++i) {
    pixel[i] = static_cast<std::uint8_t>((pixel[i] + kColour[i]) / 2);
  }
}

}  // namespace

std::optional<Wall> WallOf(std::string_view text) {
  Wall wall;
  const bool read = std::ranges::count(text, ':') == 3 &&
                    ReadWord(TakeUpTo(text, ':'), kShapeWords, wall.Shape) &&
                    ReadReal(TakeUpTo(text, ':'), kMinDistance, kMaxDistance, wall.Distance) &&
                    ReadReal(TakeUpTo(text, ':'), -1, 1, wall.Curvature) &&
                    ReadWord(TakeUpTo(text, ':'), kAxisWords, wall.Axis);
  return read ? std::optional(wall) : std::nullopt;
}

double WallDepth(const Wall& wall, double x, double y) {
  const double behind = wall.Curvature == 0 ? 0 : Behind(wall, x, y);
  const double depth = wall.Distance + behind;
  return depth > 0 ? depth : 0;
}

std::optional<std::array<double, 3>> WallPlaceOf(const Wall& wall, PanelSize panel, double column,
                                                 double row) {
  constexpr int kSteps = 100;
  constexpr double kSettled = 1e-6;  // metres
  const double focal = kThrowRatio * panel.Width;
  const double across = (column - panel.Width / 2.0) / focal;
  const double down = (row - AxisRow(wall.Axis, panel)) / focal;
  double depth = wall.Distance;
  for (int i = 0; i < kSteps; ++i) {
    const double next = WallDepth(wall, across * depth, down * depth);
    if (next <= 0) return std::nullopt;
    if (std::abs(next - depth) < kSettled) return std::array{across * next, down * next, next};
    depth = next;
  }
  return std::nullopt;
}

std::array<double, 2> PanelPositionThrough(const Wall& wall, PanelSize panel, double x, double y,
                                           double depth) {
  const double focal = kThrowRatio * panel.Width;
  return {panel.Width / 2.0 + x * focal / depth, AxisRow(wall.Axis, panel) + y * focal / depth};
}

bool PanelPositionAt(const Wall& wall, PanelSize panel, double x, double y,
                     std::array<double, 2>& position) {
  return PositionAtDepth(wall, panel, x, y, WallDepth(wall, x, y), position);
}

RgbImage WallPicture(const RgbImage& panel_picture, const Wall& wall, PanelSize size) {
  const PanelSize panel{panel_picture.Width, panel_picture.Height};
  const View view = ViewOf(wall, panel, size);
  const double metres = view.Metres;
  RgbImage image = BlackImage(size);
  ForEachRow(size.Height, [&](int row) {
    std::uint8_t* pixel = image.Pixels.data() + (image.At(0, row) - image.Pixels.data());
    const double y = (row + 0.5 - size.Height / 2.0) * metres + view.Middle;
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

void DrawStraightFrame(RgbImage& wall_picture, const Wall& wall, PanelSize panel) {
  const std::optional<Edges> edges = StraightEdges(wall, panel);
  if (!edges) return;
  const View view = ViewOf(wall, panel, {wall_picture.Width, wall_picture.Height});
  const auto column = [&](double x) {
    return static_cast<int>(std::floor(x / view.Metres + wall_picture.Width / 2.0));
  };
  const auto row = [&](double y) {
    return static_cast<int>(
        std::floor((y - view.Middle) / view.Metres + wall_picture.Height / 2.0));
  };
  for (int x = column(edges->Left); x <= column(edges->Right); ++x) {
    for (const double y : {edges->Top, edges->Bottom}) Tint(wall_picture, x, row(y));
  }
  for (int y = row(edges->Top) + 1; y < row(edges->Bottom); ++y) {
    for (const double x : {edges->Left, edges->Right}) Tint(wall_picture, column(x), y);
  }
}

}  // namespace warpline
