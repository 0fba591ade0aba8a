#include "fit/landing.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "model/registers.h"
#include "picture/panel_lines.h"

namespace warpline {
namespace {

// A number that goes on along the panel, and how fast.
struct Going {
  double Value;
  double Slope;
};

// The size of the line at a share of the panel; lines lie at the centres of their pixels. Beyond
// the outermost ones it goes on as it began.
Going SizeAt(const AxisLines& lines, double share, int line_count) {
  const double last = static_cast<double>(lines.Sizes.size() - 1);
  const double scale = last / (line_count - 1);
  const double at = (share * line_count - 0.5) * scale;
  const auto i = static_cast<std::ptrdiff_t>(std::clamp(at, 0.0, last - 1));
  const double* const size = lines.Sizes.data() + i;
  const double step = size[1] - size[0];
  return {size[0] + (at - static_cast<double>(i)) * step, step * scale * line_count};
}

// Where a line of that size shows a picture position, both in shares of its length: PanelLine the
// other way round.
Going PlaceOn(const AxisLines& lines, Going size, double position) {
  const double k = lines.OpticalCentre;
  const double middle = (k > 0 ? -0.5 : 0.5) * lines.Extension;
  const double drawn = size.Value * (position - 0.5) + (size.Value - 1) * k / 2 - middle;
  const double full = 1 + lines.Extension;
  return {0.5 + lines.Shift + drawn / full, size.Slope * (position - 0.5 + k / 2) / full};
}

}  // namespace

AxisLines AxisLinesOf(const AxisRegisters& registers, Axis axis, PanelSize panel) {
  const int length = LineLength(panel, axis);
  const AxisPlacement placement = PlacementOf(registers, length);
  AxisLines lines{{}, placement.OpticalCentre, placement.Extension, placement.Shift / length};
  for (const std::int32_t scale : RebuildLineScales(registers, LineCount(panel, axis))) {
    lines.Sizes.push_back(scale > 0 ? static_cast<double>(kUnitScale) / scale : 0);
  }
  return lines;
}

DrawnLines DrawnLinesOf(const RegisterSet& registers, PanelSize panel) {
  return {AxisLinesOf(registers[kHorizontal], kHorizontal, panel),
          AxisLinesOf(registers[kVertical], kVertical, panel)};
}

double ExtensionFor(const AxisLines& lines) {
  const double k = lines.OpticalCentre;
  if (k >= -1 && k <= 1) return 0;
  double high = 0;
  double low = 1;
  for (const double size : lines.Sizes) {
    const double aside = (size - 1) * k;
    high = std::max(high, (aside + size) / 2);
    low = std::min(low, (aside - size) / 2);
  }
  return std::max(high - low - 1, 0.0);
}

PlanePoint LandingOf(const DrawnLines& lines, PanelSize panel, PlanePoint picture) {
  constexpr int kMostSteps = 30;
  constexpr double kSettled = 1e-7;
  constexpr double kNearlyFolded = 0.3;
  PlanePoint place = picture;
  for (int i = 0; i < kMostSteps; ++i) {
    const Going row = SizeAt(lines[kHorizontal], place.Y, panel.Height);
    const Going column = SizeAt(lines[kVertical], place.X, panel.Width);
    const Going x = PlaceOn(lines[kHorizontal], row, picture.X);
    const Going y = PlaceOn(lines[kVertical], column, picture.Y);
    const PlanePoint off{x.Value - place.X, y.Value - place.Y};
    // Newton's step, which is exact where the sizes run straight.
    const double both = 1 - x.Slope * y.Slope;
    const bool sure = both > kNearlyFolded;
    place.X += sure ? (off.X + x.Slope * off.Y) / both : off.X;
    place.Y += sure ? (off.Y + y.Slope * off.X) / both : off.Y;
    if (std::abs(off.X) + std::abs(off.Y) < kSettled) break;
  }
  return place;
}

}  // namespace warpline
