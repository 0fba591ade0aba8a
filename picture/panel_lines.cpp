#include "picture/panel_lines.h"

#include "model/registers.h"

namespace warpline {

AxisPlacement PlacementOf(const AxisRegisters& registers, int line_length) {
  AxisPlacement placement;
  placement.OpticalCentre = SignedRegisterValue(registers[kOptCenter]) / 32.0;
  placement.Extension = UnsignedRegisterValue(registers[kPanelExt]) / double{kUnitScale};
  placement.Shift = -SignedRegisterValue(registers[kScroll]) / 32768.0 * line_length / 2;
  return placement;
}

std::vector<PanelLine> PanelLinesOf(const std::vector<std::int32_t>& scales, int line_length,
                                    const AxisPlacement& placement) {
  const double length = line_length;
  const double k = placement.OpticalCentre;
  const double enlarged = 1 + placement.Extension;
  const double middle = (k > 0 ? -0.5 : 0.5) * placement.Extension * length;
  std::vector<PanelLine> lines;
  lines.reserve(scales.size());
  for (const std::int32_t value : scales) {
    if (value <= 0) {
      lines.push_back({0, 0, 0});
      continue;
    }
    const double scale = value / double{kUnitScale};
    const double aside = (length / scale - length) * k / 2;
    const double slope = enlarged * scale;
    const double offset =
        length / 2 + (middle - aside) * scale - (length / 2 + placement.Shift) * slope;
    lines.push_back({offset, slope, 1});
  }
  return lines;
}

std::vector<PanelLine> PanelLinesOf(const AxisRegisters& registers, Axis axis, PanelSize panel) {
  const int length = LineLength(panel, axis);
  return PanelLinesOf(RebuildLineScales(registers, LineCount(panel, axis)), length,
                      PlacementOf(registers, length));
}

std::vector<LineMark> LineMarks(const AxisRegisters& registers, int line_count) {
  const std::vector<std::int32_t> scales = RebuildLineScales(registers, line_count);
  std::vector<LineMark> marks(scales.size(), LineMark::kSure);
  for (std::size_t i = 2; i < scales.size(); ++i) {
    const std::int32_t second = scales[i] - 2 * scales[i - 1] + scales[i - 2];
    if (second == -8 || second == 7) {
      marks[i] = LineMark::kAtLimit;
    } else if (marks[i - 1] != LineMark::kSure) {
      marks[i] = LineMark::kBehindLimit;
    }
  }
  return marks;
}

}  // namespace warpline
