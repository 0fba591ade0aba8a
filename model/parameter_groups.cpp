#include "model/parameter_groups.h"

#include <algorithm>

namespace warpline {
namespace {

// The value as the slider shows it, or the slider's value as it is stored: the same change of sign.
int Signed(const SliderTarget& target, int value) {
  const bool negated = RowOfParameter(target.field).negated_horizontally;
  return target.axis == kHorizontal && negated ? -value : value;
}

Range BoundsOf(const CorrectionData& correction, const SliderTarget& target) {
  const Range stored = WindowRange(target.field, correction.Projection[target.axis]);
  const auto [low, high] = std::minmax({Signed(target, stored.low), Signed(target, stored.high)});
  return {low, high};
}

}  // namespace

SliderTarget TargetOf(const CorrectionData& correction, int group, int slider) {
  const bool exchanged = group == kGroupHorizontal && correction.Projection[kHorizontal] != 0;
  const int column = exchanged ? 1 - slider : slider;
  return kGroups.at(static_cast<std::size_t>(group)).targets.at(static_cast<std::size_t>(column));
}

SliderSetup SetUpSlider(const CorrectionData& correction, int group, int slider) {
  const SliderTarget target = TargetOf(correction, group, slider);
  const AxisParameters& parameters = correction.Axes[target.axis];
  const ParameterRow& row = RowOfParameter(target.field);
  const auto [low, high] = BoundsOf(correction, target);
  const int value = Signed(target, row.load(parameters));
  SliderSetup setup;
  setup.low = low;
  setup.high = high;
  setup.large_step = row.large_step;
  setup.value = std::clamp(value, low, high);
  setup.text = std::to_string(value).append(row.unit);
  setup.enabled = target.field != ParameterField::kOptical || parameters.Distortion != 0;
  return setup;
}

void MoveSlider(CorrectionData& correction, int group, int slider, int slider_value) {
  const SliderTarget target = TargetOf(correction, group, slider);
  const auto [low, high] = BoundsOf(correction, target);
  const int held = std::clamp(slider_value, low, high);
  RowOfParameter(target.field).store(correction.Axes[target.axis], Signed(target, held));
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
