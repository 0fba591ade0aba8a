#include "tests/app/controller_rig.h"

namespace warpline {
namespace {

TEST(MainController, ReleasedKeysSendByKeyAndShift) {
  ControllerRig rig;
  const struct {
    std::vector<int> keys;  // 37 to 40: the arrows, 16: shift
    bool shift_alone, real_time, sends;
  } cases[] = {
      {{37, 38, 39, 40, 16}, false, true, true},
      {{17, 34, 36, 41, 9}, false, true, false},
      {{37, 39, 16}, true, true, false},  // another shift is still held
      {{37, 16}, false, false, false},
  };
  for (const auto& row : cases) {
    for (const int key : row.keys) {
      SCOPED_TRACE(testing::Message() << key << ", " << row.shift_alone << row.real_time);
      rig.global.Settings.AutoApply = row.real_time;
      rig.controller.MoveSlider(1, key);
      EXPECT_TRUE(rig.library.calls.empty());
      rig.controller.ReleaseKey(key, row.shift_alone);
      rig.ExpectApplied(row.sends);
    }
  }
}

TEST(MainController, SliderStoresAtOnceAndSendsWhenReleased) {
  ControllerRig rig;
  rig.controller.SelectGroup(3);
  rig.controller.MoveSlider(0, 64);
  EXPECT_EQ(rig.H().Amplitude, 64);
  EXPECT_EQ(rig.view.values_shown, 1);
  EXPECT_EQ(rig.global.SecondCopy[kHorizontal].Amplitude, 0);
  EXPECT_TRUE(rig.library.calls.empty());
  rig.controller.ReleaseSlider();
  rig.ExpectApplied(true);
  EXPECT_EQ(rig.global.SecondCopy[kHorizontal].Amplitude, 64);
  rig.global.Settings.AutoApply = 0;
  rig.controller.ReleaseSlider();
  rig.ExpectApplied(false);

  // A value beyond the slider stays until it moves.
  rig.controller.SelectGroup(0);
  rig.V().Distortion = 200;
  rig.controller.MoveSlider(1, 150);
  EXPECT_EQ(rig.V().Distortion, 200);
  rig.controller.MoveSlider(1, 149);
  EXPECT_EQ(rig.V().Distortion, 149);
}

TEST(MainController, IconOfTheOpticalRowAloneResets) {
  ControllerRig rig;
  const struct {
    const char* name;
    int group, button;
    std::int16_t flag_h, flag_v;
    int optical_h, optical_v;  // afterwards; 5 before
  } cases[] = {
      {"vertical", 0, 0, 0, 0, 5, -32},
      {"vertical, downward", 0, 0, 0, 1, 5, 32},
      {"vertical distortion", 0, 1, 0, 0, 5, 5},
      {"horizontal", 1, 3, 0, 0, -32, 5},
      {"horizontal, to the right", 1, 2, 1, 0, 32, 5},
      {"horizontal distortion", 1, 2, 0, 0, 5, 5},
      {"horizontal distortion, to the right", 1, 3, 1, 0, 5, 5},
      {"linearity", 2, 4, 0, 0, 5, 5},
      {"position", 4, 9, 0, 0, 5, 5},
      {"button of another group", 2, 0, 0, 0, 5, 5},
      {"right button, of another group", 1, 1, 0, 0, 5, 5},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.name);
    rig.global.Correction.Projection = {row.flag_h, row.flag_v};
    rig.H().Optical = rig.V().Optical = 5;
    rig.H().Distortion = rig.V().Distortion = 10;
    rig.controller.SelectGroup(row.group);
    rig.controller.PressIcon(row.button);
    EXPECT_EQ(rig.H().Optical, row.optical_h);
    EXPECT_EQ(rig.V().Optical, row.optical_v);
    rig.ExpectApplied(row.optical_h != 5 || row.optical_v != 5);
  }
  rig.global.Settings.AutoApply = 0;
  rig.controller.SelectGroup(0);
  rig.controller.PressIcon(0);
  rig.ExpectApplied(false);
}

TEST(MainController, SymmetryBoxSendsAndLeavesOptical) {
  ControllerRig rig;
  rig.H().Optical = rig.V().Optical = 5;
  rig.controller.SelectGroup(2);
  rig.controller.SetSymmetry(kHorizontal, true);
  EXPECT_EQ(rig.H().Stadium, 1);
  EXPECT_EQ(rig.V().Stadium, 0);
  EXPECT_EQ(rig.H().Optical, 5);
  EXPECT_EQ(rig.V().Optical, 5);
  const Texts frames = rig.Frames();
  ASSERT_EQ(frames.size(), 8U);
  EXPECT_EQ(frames[5], "01DF0000051000010001F7");
  EXPECT_EQ(frames[6], "01DF0000051100010000F7");
  rig.global.Settings.AutoApply = 0;
  rig.controller.SetSymmetry(kHorizontal, false);
  EXPECT_EQ(rig.H().Stadium, 0);
  rig.ExpectApplied(false);
}

TEST(MainController, ScreenTypeStartsAfreshAndClearsTheProjector) {
  ControllerRig rig;
  rig.global.Correction.Projection = {1, 0};
  rig.global.CurrentFile = rig.temp / "old.wlt";
  rig.H().Distortion = 40;
  rig.display.answers = {MessageAnswer::kNo};
  rig.controller.SelectScreenType(4);
  CorrectionData fresh;
  fresh.ScreenType = 4;
  fresh.Projection = {1, 0};
  ResetToScreenType(fresh);
  EXPECT_EQ(rig.global.Correction, fresh);
  EXPECT_EQ(rig.global.SecondCopy, fresh.Axes);
  EXPECT_EQ(rig.controller.Caption(), "Warpline Tool 3.0");
  EXPECT_FALSE(rig.controller.HasUnsavedChanges());
  EXPECT_EQ(rig.Frames(), kInitializeFrames);

  rig.V().Distortion = 7;
  rig.controller.SelectScreenType(4);  // chosen already, and the question is cancelled
  EXPECT_EQ(rig.V().Distortion, 7);
  EXPECT_EQ(rig.display.messages.size(), 2U);
  rig.display.answers = {MessageAnswer::kNo};
  rig.controller.SelectScreenType(-1);
  EXPECT_EQ(rig.global.Correction.ScreenType, 4);
  EXPECT_TRUE(rig.library.calls.empty());
}

TEST(MainController, ProjectionToggleResetsAndAlwaysSends) {
  ControllerRig rig;
  rig.global.Settings.AutoApply = 0;
  rig.H().Distortion = 40;
  rig.H().Amplitude = 3;
  rig.library.results[0] = kOpenConnect;
  int second_copy = 0;  // when sending begins: it follows the toggle itself
  rig.busy.on_begin = [&] { second_copy = rig.global.SecondCopy[kHorizontal].Optical; };
  rig.controller.ToggleProjection(kHorizontal);
  EXPECT_EQ(rig.global.Correction.Projection[kHorizontal], 1);
  EXPECT_EQ(rig.H().Distortion, 0);
  EXPECT_EQ(rig.H().Optical, 32);
  EXPECT_EQ(second_copy, 32);
  EXPECT_EQ(rig.H().Amplitude, 3);
  EXPECT_EQ(rig.V().Optical, -32);
  EXPECT_EQ(rig.display.messages.size(), 1U);

  rig.library.results.clear();
  rig.library.calls.clear();
  for (const int optical : {32, -32}) {
    rig.controller.ToggleProjection(kVertical);
    EXPECT_EQ(rig.V().Optical, optical);
    rig.ExpectApplied(true);
  }
}

TEST(MainController, CommandInsideACommandDoesNothing) {
  ControllerRig rig;
  rig.V().Distortion = 40;
  rig.busy.on_begin = [&rig] {
    if (rig.busy.depth == 1) rig.controller.Initialize();
  };
  rig.controller.Apply();
  EXPECT_EQ(rig.V().Distortion, 40);
  rig.ExpectApplied(true);
  rig.controller.Initialize();
  EXPECT_EQ(rig.Frames(), kInitializeFrames);
}

TEST(MainController, PreviewOfAFaultyCurveIsReported) {
  ControllerRig rig;
  EXPECT_EQ(rig.controller.Preview().size(), 13U);
  rig.global.Correction.Curves[kHorizontal].CorreDataPts[1].X = 0;
  EXPECT_TRUE(rig.controller.Preview().empty());
  EXPECT_EQ(rig.display.Texts(), Texts{"[3] Wrong value."});
}

}  // namespace
}  // namespace warpline
