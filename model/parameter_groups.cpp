#include "model/parameter_groups.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace warpline {
namespace {

struct FieldRow {
  ParameterField field;
  int low;  // of the stored value, projection flag 0
  int high;
  int large_step;
  bool flips_with_projection;  // a flag of 1 negates and exchanges the bounds
  bool negated_horizontally;   // the horizontal slider shows the value with the opposite sign
  const char* unit;
};

constexpr std::array<FieldRow, 5> kFieldRows{{
    {ParameterField::kDistortion, -150, 150, 10, false, false, "%"},
    {ParameterField::kOptical, -64, 16, 4, true, true, ""},
    {ParameterField::kLinearity, -127, 127, 8, false, false, ""},
    {ParameterField::kAmplitude, -127, 127, 8, false, false, ""},
    {ParameterField::kPosition, -32767, 32767, 128, false, true, ""},
}};

constexpr std::array<std::array<SliderTarget, kSliderCount>, kGroupCount> kTargets{{
    {{{kVertical, ParameterField::kOptical}, {kVertical, ParameterField::kDistortion}}},
    {{{kHorizontal, ParameterField::kDistortion}, {kHorizontal, ParameterField::kOptical}}},
    {{{kHorizontal, ParameterField::kLinearity}, {kVertical, ParameterField::kLinearity}}},
    {{{kHorizontal, ParameterField::kAmplitude}, {kVertical, ParameterField::kAmplitude}}},
    {{{kHorizontal, ParameterField::kPosition}, {kVertical, ParameterField::kPosition}}},
}};

const FieldRow& RowOf(ParameterField field) {
  return kFieldRows[static_cast<std::size_t>(field)];
}

int Stored(const AxisParameters& parameters, ParameterField field) {
  switch (field) {
    case ParameterField::kDistortion:
      return parameters.Distortion;
    case ParameterField::kOptical:
      return parameters.Optical;
    case ParameterField::kLinearity:
      return parameters.Linearity;
    case ParameterField::kAmplitude:
      return parameters.Amplitude;
    case ParameterField::kPosition:
      return parameters.Position;
  }
  return 0;
}

void Store(AxisParameters& parameters, ParameterField field, int value) {
  const auto narrow = static_cast<std::int16_t>(value);  // every bound fits
  switch (field) {
    case ParameterField::kDistortion:
      parameters.Distortion = narrow;
      break;
    case ParameterField::kOptical:
      parameters.Optical = narrow;
      break;
    case ParameterField::kLinearity:
      parameters.Linearity = narrow;
      break;
    case ParameterField::kAmplitude:
      parameters.Amplitude = narrow;
      break;
    case ParameterField::kPosition:
      parameters.Position = value;
      break;
  }
}

// The value as the slider shows it, or the slider's value as it is stored: the same change of sign.
int Signed(const SliderTarget& target, int value) {
  return target.axis == kHorizontal && RowOf(target.field).negated_horizontally ? -value : value;
}

// Bounds of the slider.
std::pair<int, int> BoundsOf(const CorrectionData& correction, const SliderTarget& target) {
  const FieldRow& row = RowOf(target.field);
  int low = row.low;
  int high = row.high;
  if (row.flips_with_projection && correction.Projection[target.axis] != 0) {
    std::tie(low, high) = std::pair(-high, -low);
  }
  return std::minmax({Signed(target, low), Signed(target, high)});
}

}  // namespace

SliderTarget TargetOf(const CorrectionData& correction, int group, int slider) {
  const bool exchanged = group == kGroupHorizontal && correction.Projection[kHorizontal] != 0;
  const int column = exchanged ? 1 - slider : slider;
  return kTargets.at(static_cast<std::size_t>(group)).at(static_cast<std::size_t>(column));
}

SliderSetup SetUpSlider(const CorrectionData& correction, int group, int slider) {
  const SliderTarget target = TargetOf(correction, group, slider);
  const AxisParameters& parameters = correction.Axes[target.axis];
  const FieldRow& row = RowOf(target.field);
  const auto [low, high] = BoundsOf(correction, target);
  const int value = Signed(target, Stored(parameters, target.field));
  SliderSetup setup;
  setup.low = low;
  setup.high = high;
  setup.large_step = row.large_step;
  setup.value = std::clamp(value, low, high);
  setup.text = std::to_string(value) + row.unit;
  setup.enabled = target.field != ParameterField::kOptical || parameters.Distortion != 0;
  return setup;
}

void MoveSlider(CorrectionData& correction, int group, int slider, int slider_value) {
  const SliderTarget target = TargetOf(correction, group, slider);
  const auto [low, high] = BoundsOf(correction, target);
  const int held = std::clamp(slider_value, low, high);
  Store(correction.Axes[target.axis], target.field, Signed(target, held));
}

int OpticalSlider(const CorrectionData& correction, int group) {
  for (int slider = 0; slider < kSliderCount; ++slider) {
    if (TargetOf(correction, group, slider).field == ParameterField::kOptical) return slider;
  }
  return -1;
}

bool CurveEditorShown(int group) {
  return group == kGroupVertical || group == kGroupHorizontal;
}

bool CurveEditorEnabled(const CorrectionData& correction, int group) {
  return CurveEditorShown(group) && correction.ScreenType == kOtherScreens;
}

Axis AxisOfGroup(int group) {
  return group == kGroupVertical ? kVertical : kHorizontal;
}

void ToggleProjection(CorrectionData& correction, Axis axis) {
  std::int16_t& flag = correction.Projection[axis];
  flag = flag == 0 ? 1 : 0;
  correction.Axes[axis].Distortion = 0;
  correction.Axes[axis].Optical = ResetOptical(flag);
}

}  // namespace warpline
