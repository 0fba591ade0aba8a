#pragma once

#include <cstdint>
#include <vector>

#include "core/register_set.h"

// How the panel draws each of its lines, from the registers alone.
//
// A line of the axis (a row for the horizontal one, a column for the vertical one) has L pixels.
// With q its rebuilt scale it is drawn p = L * 32768 / q pixels long. The optical centre k =
// opt_center / 32 says where a shorter line goes: its middle lies (p - L) * k / 2 from the panel's
// middle, so that k = -1 holds all ends on the right (or bottom) edge and k = 1 those on the other.
// Beyond -1..1 lines leave the panel by w = L * panel_ext / 32768 on the side that k points away
// from; the panel then draws everything smaller by L / (L + w), so that it fits again. The position
// moves the picture by -scroll / 32768 * L / 2 pixels. Linearity and symmetry registers do not move
// the picture here: their effect is not known.
//
// All in all, the pixel position x on the line (0..L, pixel centres at halves) shows the picture at
// Offset + Slope * x.

namespace warpline {

struct PanelLine {
  double Offset = 0;
  double Slope = 1;       // picture pixels a panel pixel; 0: the line is black
  double Brightness = 1;  // 0 for a black line, else 1
};

// What the registers say about all lines of an axis together.
struct AxisPlacement {
  double OpticalCentre = 0;  // k
  double Extension = 0;      // w / L
  double Shift = 0;          // pixels, to the right or down
};

AxisPlacement PlacementOf(const AxisRegisters& registers, int line_length);

// One line per scale; a scale of 0 or below leaves a black line.
std::vector<PanelLine> PanelLinesOf(const std::vector<std::int32_t>& scales, int line_length,
                                    const AxisPlacement& placement);

std::vector<PanelLine> PanelLinesOf(const AxisRegisters& registers, Axis axis, PanelSize panel);

// What can be told of a line's scale from the second differences. One at its limit (-8 or 7) may
// have been held there because the line asked for more; every line behind it may then be off.
enum class LineMark : std::uint8_t { kSure, kAtLimit, kBehindLimit };

std::vector<LineMark> LineMarks(const AxisRegisters& registers, int line_count);

}  // namespace warpline
