#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "core/correction.h"

// The projector's correction registers as hexadecimal texts, nine an axis.

namespace warpline {

struct PanelSize {
  int Width = 1024;  // pixels; the vertical axis has one line per column
  int Height = 768;  // pixels; the horizontal axis has one line per row

  bool operator==(const PanelSize&) const = default;
};

inline constexpr PanelSize kDefaultPanelSize{};

// Order of the texts in a record. Entries 0-8 are the horizontal axis and 9-17 the vertical one
// when both are counted.
enum RegisterField : std::size_t {
  kPanelExt = 0,
  kScroll,
  kOptCenter,
  kLinearity,
  kCompDisp,
  kStadium,
  kCorre0,
  kCorre1,
  kCorre2,
};
inline constexpr std::size_t kRegisterFieldCount = 9;

struct RegisterFieldRow {
  std::string_view name;   // the register's name behind "h_" or "v_"
  std::size_t hex_digits;  // length of the text; 0: a table whose length depends on the panel
};

inline constexpr std::array<RegisterFieldRow, kRegisterFieldCount> kRegisterFields{{
    {"panel_ext", 4},
    {"scroll", 4},
    {"opt_center", 2},
    {"linearity", 2},
    {"comp_disp", 2},
    {"stadium", 2},
    {"corre_0", 4},
    {"corre_1", 2},
    {"corre_2", 0},
}};

// One axis's registers. Every 2- and 4-digit text is little-endian two's complement in upper-case
// hex digit pairs; corre_2 holds one signed 4-bit second difference per line from line 2 on, each
// pair of lines as one byte whose high nibble belongs to the later line.
using AxisRegisters = std::array<std::string, kRegisterFieldCount>;

// Both axes, [axis][field].
using RegisterSet = std::array<AxisRegisters, kAxisCount>;

// Digits of an axis's corre_2 table for a line count: two for every whole pair of lines from line 2
// on.
constexpr std::size_t Corre2Digits(int line_count) {
  return line_count < 4 ? 0 : static_cast<std::size_t>((line_count - 2) / 2 * 2);
}

// Lines that cross an axis: panel rows for the horizontal one, columns for the vertical one.
constexpr int LineCount(PanelSize panel, Axis axis) {
  return axis == kHorizontal ? panel.Height : panel.Width;
}

// Length of those lines in pixels.
constexpr int LineLength(PanelSize panel, Axis axis) {
  return axis == kHorizontal ? panel.Width : panel.Height;
}

}  // namespace warpline
