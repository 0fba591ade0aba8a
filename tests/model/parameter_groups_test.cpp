#include "model/parameter_groups.h"

#include <gtest/gtest.h>

namespace warpline {
namespace {

CorrectionData Reset(std::int16_t type, std::int16_t projection_h, std::int16_t projection_v) {
  CorrectionData correction;
  correction.ScreenType = type;
  correction.Projection = {projection_h, projection_v};
  ResetToScreenType(correction);
  return correction;
}

TEST(SetUpSlider, FollowsTheFieldAndTheProjection) {
  // Name, projections, group, slider; axis, ends, step, value, text, whether it can be used.
  using Row = std::tuple<const char*, std::int16_t, std::int16_t, int, int, Axis, int, int, int,
                         int, std::string, bool>;
  const Row cases[] = {
      {"optical V", 0, 0, 0, 0, kVertical, -64, 16, 4, -32, "-32", false},
      {"optical V from the ceiling", 0, 1, 0, 0, kVertical, -16, 64, 4, 32, "32", false},
      {"distortion V", 0, 0, 0, 1, kVertical, -150, 150, 10, 0, "0%", true},
      {"distortion H", 0, 0, 1, 0, kHorizontal, -150, 150, 10, 0, "0%", true},
      {"optical H shows the opposite sign", 0, 0, 1, 1, kHorizontal, -16, 64, 4, 32, "32", false},
      {"projecting right: optical H first", 1, 0, 1, 0, kHorizontal, -64, 16, 4, -32, "-32", false},
      {"projecting right: distortion H second", 1, 0, 1, 1, kHorizontal, -150, 150, 10, 0, "0%",
       true},
      {"linearity V", 0, 0, 2, 1, kVertical, -127, 127, 8, 0, "0", true},
      {"amplitude H", 0, 0, 3, 0, kHorizontal, -127, 127, 8, 0, "0", true},
      {"position V", 0, 0, 4, 1, kVertical, -32767, 32767, 128, 0, "0", true},
  };
  for (const auto& [name, to_right, down, group, slider, axis, low, high, step, value, text,
                    enabled] : cases) {
    SCOPED_TRACE(name);
    const CorrectionData correction = Reset(0, to_right, down);
    EXPECT_EQ(TargetOf(correction, group, slider).axis, axis);
    const SliderSetup setup = SetUpSlider(correction, group, slider);
    EXPECT_EQ(std::tuple(setup.low, setup.high, setup.large_step, setup.value, setup.text),
              std::tuple(low, high, step, value, text));
    EXPECT_EQ(setup.enabled, enabled);
  }
}

TEST(MoveSlider, StoresWithTheSignOfTheAxis) {
  CorrectionData correction = Reset(0, 0, 0);
  MoveSlider(correction, kGroupHorizontal, 0, 40);
  MoveSlider(correction, kGroupHorizontal, 1, 10);
  MoveSlider(correction, kGroupVertical, 1, -150);
  MoveSlider(correction, kGroupVertical, 0, 10);
  MoveSlider(correction, kGroupPosition, 0, 32767);
  MoveSlider(correction, kGroupPosition, 1, 99999);
  EXPECT_EQ(correction.Axes[kHorizontal], (AxisParameters{40, -10, 0, 0, -32767, 0}));
  EXPECT_EQ(correction.Axes[kVertical], (AxisParameters{-150, 10, 0, 0, 32767, 0}));
  EXPECT_EQ(SetUpSlider(correction, kGroupHorizontal, 1).text, "10");
  EXPECT_TRUE(SetUpSlider(correction, kGroupHorizontal, 1).enabled);
  EXPECT_EQ(SetUpSlider(correction, kGroupHorizontal, 0).text, "40%");
}

TEST(SetUpSlider, ShowsWhatAFileMayHoldBeyondTheSlider) {
  CorrectionData correction = Reset(0, 0, 0);
  correction.Axes[kVertical].Distortion = -300;
  const SliderSetup setup = SetUpSlider(correction, kGroupVertical, 1);
  EXPECT_EQ(setup.value, -150);
  EXPECT_EQ(setup.text, "-300%");
}

TEST(ToggleProjection, ResetsTheAxisForItsNewOrientation) {
  for (const Axis axis : {kHorizontal, kVertical}) {
    CorrectionData correction = Reset(2, 0, 0);
    for (AxisParameters& parameters : correction.Axes) parameters = {40, -10, 5, 6, 7, 1};
    CorrectionData expected = correction;
    ToggleProjection(correction, axis);
    expected.Projection[axis] = 1;
    expected.Axes[axis] = {0, 32, 5, 6, 7, 1};
    EXPECT_EQ(correction, expected);
    ToggleProjection(correction, axis);
    EXPECT_EQ(correction.Projection[axis], 0);
    EXPECT_EQ(correction.Axes[axis].Optical, -32);
  }
}

TEST(CurveEditor, IsForOtherScreensInTheDistortionGroups) {
  for (std::int16_t type = 0; type < kScreenTypeCount; ++type) {
    const CorrectionData correction = Reset(type, 0, 0);
    for (int group = 0; group < kGroupCount; ++group) {
      EXPECT_EQ(CurveEditorShown(group), group < 2);
      EXPECT_EQ(CurveEditorEnabled(correction, group), group < 2 && type == 5);
    }
  }
}

}  // namespace
}  // namespace warpline
