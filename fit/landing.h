#pragma once

#include <array>
#include <vector>

#include "core/correction.h"
#include "core/register_set.h"
#include "fit/plane.h"

// Where the panel shows a picture position once its lines are drawn as picture/panel_lines.h says:
// the other direction of what a pixel shows.

namespace warpline {

// How the lines of an axis are drawn.
struct AxisLines {
  std::vector<double> Sizes;  // shares of the full length, evenly from the first line to the last
  double OpticalCentre = 0;   // k
  double Extension = 0;       // w / L
  double Shift = 0;           // of the length, to the right or down
};

using DrawnLines = std::array<AxisLines, kAxisCount>;

// What the registers draw.
DrawnLines DrawnLinesOf(const RegisterSet& registers, PanelSize panel);
AxisLines AxisLinesOf(const AxisRegisters& registers, Axis axis, PanelSize panel);

// The extension that the tool encodes for such lines, before it is rounded.
double ExtensionFor(const AxisLines& lines);

// The panel position that shows a picture position, both in shares of width and height.
PlanePoint LandingOf(const DrawnLines& lines, PanelSize panel, PlanePoint picture);

}  // namespace warpline
