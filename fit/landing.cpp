#include "fit/landing.h"

#include <algorithm>
#include <cmath>

#include "model/registers.h"
#include "picture/panel_lines.h"

namespace warpline {
namespace {

// The size of the line at a share of the panel; lines lie at the centres of their pixels. Beyond
// the outermost ones it goes on as it began.
double SizeAt(const AxisLines& lines, double share, int line_count) {
  const double last = static_cast<double>(lines.Sizes.size() - 1);
  const double at = (share * line_count - 0.5) / (line_count - 1) * last;
  const double below = std::clamp(std::floor(at), 0.0, last - 1);
  const auto i = static_cast<std::size_t>(below);
  return lines.Sizes[i] + (at - below) * (lines.Sizes[i + 1] - lines.Sizes[i]);
}

// Where a line of that size shows a picture position, both in shares of its length: PanelLine the
// other way round.
double PlaceOn(const AxisLines& lines, double size, double position) {
  const double k = lines.OpticalCentre;
  const double middle = (k > 0 ? -0.5 : 0.5) * lines.Extension;
  const double drawn = size * (position - 0.5) + (size - 1) * k / 2 - middle;
  return 0.5 + lines.Shift + drawn / (1 + lines.Extension);
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
  PlanePoint place = picture;
  for (int i = 0; i < kMostSteps; ++i) {
    const double row = SizeAt(lines[kHorizontal], place.Y, panel.Height);
    const double x = PlaceOn(lines[kHorizontal], row, picture.X);
    const double column = SizeAt(lines[kVertical], x, panel.Width);
    const double y = PlaceOn(lines[kVertical], column, picture.Y);
    const bool settled = std::abs(x - place.X) + std::abs(y - place.Y) < kSettled;
    place = {x, y};
    if (settled) break;
  }
  return place;
}

}  // namespace warpline
