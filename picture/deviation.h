#pragma once

#include <array>
#include <vector>

#include "core/register_set.h"
#include "model/profile.h"

// Where the projector cannot follow a correction: what its registers mean to it (panel_lines.h)
// against what was meant. Registers drop what is beyond their bits, and the second differences of
// the line scales are held to four bits; either throws lines off, mostly all those behind too. That
// scales are whole numbers is no deviation.

namespace warpline {

// Pixels. A line whose end is off by more counts; what is less disappears in the spread of a pixel
// of the picture over those of the panel.
inline constexpr double kAllowedDeviation = 1.0;

// Lines by their index, both included.
struct LineRange {
  int First = 0;
  int Last = 0;

  bool operator==(const LineRange&) const = default;
};

// The lines of an axis that are off. No ranges: the projector follows.
struct AxisDeviation {
  double Pixels = 0;  // how far an end of the worst line is off, at most the line length
  int Line = 0;       // the first such line
  std::vector<LineRange> Ranges;  // ascending, with lines between that are not off

  bool operator==(const AxisDeviation&) const = default;
};

using Deviation = std::array<AxisDeviation, kAxisCount>;

// L = line_length pixels, n = line_count lines. Throw what BuildAxisRegisters throws.
AxisDeviation DeviationOf(const AxisCorrection& axis, int line_length, int line_count);
Deviation DeviationOf(const CorrectionData& correction, PanelSize panel);

}  // namespace warpline
