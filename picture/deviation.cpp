#include "picture/deviation.h"

#include <algorithm>
#include <cmath>

#include "model/registers.h"
#include "picture/panel_lines.h"

namespace warpline {
namespace {

// What PlacementOf reads from the registers, before they drop anything.
AxisPlacement MeantPlacement(const AxisParameters& parameters, std::span<const double> profile,
                             int line_length) {
  AxisPlacement placement;
  placement.OpticalCentre = parameters.Optical / 32.0;
  placement.Extension =
      PanelExtension(parameters, profile, line_length) / static_cast<double>(kUnitScale);
  placement.Shift = -parameters.Position / 32768.0 * line_length / 2;
  return placement;
}

double FirstEnd(const PanelLine& line) {
  return -line.Offset / line.Slope;
}

double LastEnd(const PanelLine& line, double length) {
  return (length - line.Offset) / line.Slope;
}

// How far the farther end is off; a line that is missing is off by all its length.
double PixelsBetween(const PanelLine& meant, const PanelLine& shown, double length) {
  if (meant.Slope == 0 && shown.Slope == 0) return 0;
  if (meant.Slope == 0 || shown.Slope == 0) {
    return std::min(length, length / std::max(meant.Slope, shown.Slope));
  }
  const double first = std::abs(FirstEnd(meant) - FirstEnd(shown));
  const double last = std::abs(LastEnd(meant, length) - LastEnd(shown, length));
  return std::min(length, std::max(first, last));
}

void AddLine(AxisDeviation& deviation, int line, double pixels) {
  std::vector<LineRange>& ranges = deviation.Ranges;
  if (ranges.empty() || ranges.back().Last + 1 != line) ranges.push_back({line, line});
  ranges.back().Last = line;
  if (pixels > deviation.Pixels) {
    deviation.Pixels = pixels;
    deviation.Line = line;
  }
}

}  // namespace

AxisDeviation DeviationOf(const AxisCorrection& axis, int line_length, int line_count) {
  const std::vector<double> profile = LineSizeProfile(
      axis.Parameters, axis.Projection, SampleCurve(axis.Curve, line_count), line_length);
  const AxisRegisters registers = EncodeAxisRegisters(axis.Parameters, profile, line_length);
  const std::vector<PanelLine> meant =
      PanelLinesOf(LineScales(profile, line_length), line_length,
                   MeantPlacement(axis.Parameters, profile, line_length));
  const std::vector<PanelLine> shown = PanelLinesOf(
      RebuildLineScales(registers, line_count), line_length, PlacementOf(registers, line_length));
  AxisDeviation deviation;
  for (int i = 0; i < line_count; ++i) {
    const auto at = static_cast<std::size_t>(i);
    const double pixels = PixelsBetween(meant[at], shown[at], line_length);
    if (pixels > kAllowedDeviation) AddLine(deviation, i, pixels);
  }
  return deviation;
}

Deviation DeviationOf(const CorrectionData& correction, PanelSize panel) {
  Deviation deviation;
  for (const Axis axis : {kHorizontal, kVertical}) {
    deviation[axis] = DeviationOf(CorrectionOf(correction, axis), LineLength(panel, axis),
                                  LineCount(panel, axis));
  }
  return deviation;
}

}  // namespace warpline
