#pragma once

#include "core/correction.h"
#include "core/fields.h"
#include "core/table_order.h"

// The axis parameters, one row each: what the main window lets the user choose, what the correction
// file may hold, and how both name and show it.

namespace warpline {

enum class ParameterField {
  kDistortion = 0,
  kOptical = 1,
  kLinearity = 2,
  kAmplitude = 3,
  kPosition = 4,
  kStadium = 5,
};

// In files the key is followed by the axis letter.
struct ParameterRow : FieldRow<AxisParameters> {
  ParameterField field;
  Range window;  // of the stored value, projection flag 0
  int large_step;
  bool flips_with_projection;  // a flag other than 0 negates and exchanges the bounds
  bool negated_horizontally;   // the horizontal slider shows the value with the opposite sign
  std::string_view unit;       // behind the value shown
};

// In the order of the file's lines. Files may hold more Distortion than the window offers. A line
// may hold any Optical that the register can carry: the axis's projection, which decides what
// counts, may follow in a later line.
inline constexpr std::array kParameters{
    ParameterRow{RowOf<&AxisParameters::Distortion, AxisParameters>("Distortion", {-300, 300}),
                 ParameterField::kDistortion,
                 {-150, 150},
                 10,
                 false,
                 false,
                 "%"},
    ParameterRow{RowOf<&AxisParameters::Optical, AxisParameters>("Optical", {-127, 127}),
                 ParameterField::kOptical,
                 {-64, 16},
                 4,
                 true,
                 true,
                 ""},
    ParameterRow{RowOf<&AxisParameters::Linearity, AxisParameters>("Linearity", {-127, 127}),
                 ParameterField::kLinearity,
                 {-127, 127},
                 8,
                 false,
                 false,
                 ""},
    ParameterRow{RowOf<&AxisParameters::Amplitude, AxisParameters>("Amplitude", {-127, 127}),
                 ParameterField::kAmplitude,
                 {-127, 127},
                 8,
                 false,
                 false,
                 ""},
    ParameterRow{RowOf<&AxisParameters::Position, AxisParameters>("Position", {-32767, 32767}),
                 ParameterField::kPosition,
                 {-32767, 32767},
                 128,
                 false,
                 true,
                 ""},
    ParameterRow{RowOf<&AxisParameters::Stadium, AxisParameters>("Stadium", {0, 1}),
                 ParameterField::kStadium,
                 {0, 1},
                 1,
                 false,
                 false,
                 ""},
};
static_assert(RowsStandInOrder(kParameters, &ParameterRow::field));

constexpr const ParameterRow& RowOfParameter(ParameterField field) {
  return kParameters[static_cast<std::size_t>(field)];
}

// What the window offers for a stored value of an axis with this projection flag.
constexpr Range WindowRange(ParameterField field, std::int16_t projection_flag) {
  const ParameterRow& row = RowOfParameter(field);
  if (!row.flips_with_projection || projection_flag == 0) return row.window;
  return {-row.window.high, -row.window.low};
}

}  // namespace warpline
