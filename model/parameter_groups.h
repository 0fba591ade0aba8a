#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "core/correction.h"
#include "core/message_numbers.h"
#include "core/parameters.h"

// The sliders that edit the axis parameters: five groups of two. Bounds, steps and signs are those
// of the parameters' own table.

namespace warpline {

inline constexpr int kSliderCount = 2;

enum ParameterGroup : int {
  kGroupVertical = 0,
  kGroupHorizontal = 1,
  kGroupLinearity = 2,
  kGroupAmplitude = 3,
  kGroupPosition = 4,
};

// What a slider of a group edits.
struct SliderTarget {
  Axis axis = kHorizontal;
  ParameterField field = ParameterField::kDistortion;
};

struct GroupRow {
  ParameterGroup group;
  int caption;                                     // message number of the option button
  std::array<int, kSliderCount> slider_captions;   // message numbers of the two rows
  std::array<SliderTarget, kSliderCount> targets;  // while not projecting right
};

// Every group, at the index of its number.
inline constexpr std::array kGroups{
    GroupRow{kGroupVertical,
             kMsgCorrectVertical,
             {kMsgTop, kMsgBottom},
             {{{kVertical, ParameterField::kOptical}, {kVertical, ParameterField::kDistortion}}}},
    GroupRow{
        kGroupHorizontal,
        kMsgCorrectHorizontal,
        {kMsgLeft, kMsgRight},
        {{{kHorizontal, ParameterField::kDistortion}, {kHorizontal, ParameterField::kOptical}}}},
    GroupRow{
        kGroupLinearity,
        kMsgCorrectLinearity,
        {kMsgHorizontalSide, kMsgVerticalSide},
        {{{kHorizontal, ParameterField::kLinearity}, {kVertical, ParameterField::kLinearity}}}},
    GroupRow{
        kGroupAmplitude,
        kMsgCorrectAmplitude,
        {kMsgHorizontalSide, kMsgVerticalSide},
        {{{kHorizontal, ParameterField::kAmplitude}, {kVertical, ParameterField::kAmplitude}}}},
    GroupRow{kGroupPosition,
             kMsgCorrectPosition,
             {kMsgHorizontalSide, kMsgVerticalSide},
             {{{kHorizontal, ParameterField::kPosition}, {kVertical, ParameterField::kPosition}}}},
};
static_assert(RowsStandInOrder(kGroups, &GroupRow::group));
inline constexpr int kGroupCount = kGroups.size();

// How a slider stands. Values are those of the slider: the horizontal Optical and Position are
// stored with the opposite sign.
struct SliderSetup {
  int low = 0;
  int high = 0;
  int large_step = 1;
  int value = 0;  // held to low..high; the text shows what is stored
  std::string text;
  bool enabled = true;
};

// Which field slider 0 or 1 of a group (0..4) edits. In the horizontal group the two change places
// with ProjectionH.
SliderTarget TargetOf(const CorrectionData& correction, int group, int slider);

// Bounds, step, value and text of a slider. An optical-centre row is enabled only while its axis's
// Distortion is not 0.
SliderSetup SetUpSlider(const CorrectionData& correction, int group, int slider);

// Stores what a slider was moved to, held to its bounds.
void MoveSlider(CorrectionData& correction, int group, int slider, int slider_value);

// The slider of the group that edits Optical, -1 when the group has none.
int OpticalSlider(const CorrectionData& correction, int group);

// The curve-editor button: shown in the two distortion groups, enabled for "Other Screens" alone.
bool CurveEditorShown(int group);
bool CurveEditorEnabled(const CorrectionData& correction, int group);

// The axis that a distortion group edits: group 0 the vertical, group 1 the horizontal one.
Axis AxisOfGroup(int group);

// Turns an axis's projection flag over and puts its Distortion to 0 and its Optical to the new
// flag's reset value.
void ToggleProjection(CorrectionData& correction, Axis axis);

}  // namespace warpline
