#include <random>

#include "model/parameter_groups.h"
#include "tests/app/controller_rig.h"

// Undo, redo, and what makes one axis of the other.

namespace warpline {
namespace {

struct StepsRig : EngineRig {
  void Drag(int slider, int value) {
    controller.MoveSlider(slider, value - 1);
    controller.MoveSlider(slider, value);
    controller.ReleaseSlider();
  }
  void Key(int value) {
    controller.MoveSlider(1, value);
    controller.ReleaseKey(kKeyRight, false);
  }
  void DragAndSave() {
    view.saves.push_back(temp / "first.wlt");
    Drag(1, 40);
    EXPECT_TRUE(controller.Save());
  }
  std::string Saved() {
    FileData data;
    data.Correction = global.Correction;
    EXPECT_TRUE(files.SaveDataFile(temp / "now.wlt", kTypeWlt, data));
    return TempFolder::Read(temp / "now.wlt");
  }
  int Steps() {
    int steps = 0;
    for (; !controller.UndoName().empty(); ++steps) controller.Undo();
    for (int step = 0; step < steps; ++step) controller.Redo();
    return steps;
  }

  FakeView view;
  CorrectionHistory::Time now;
  MainController controller{engine, view, temp.Path(), [this] { return now; }};
};

TEST(CorrectionSteps, OneGestureIsOneStepThatIsNamed) {
  StepsRig rig;
  rig.global.Settings.AutoApply = 0;
  const auto name_after = [&](auto act) {
    act();
    return rig.controller.UndoName();
  };
  EXPECT_EQ(name_after([] {}), "");
  EXPECT_EQ(name_after([&] { rig.Drag(1, 40); }), "Bottom 40%");
  rig.Drag(1, 42);
  EXPECT_EQ(rig.Steps(), 2);
  for (const int value : {43, 44, 45}) rig.Key(value);
  EXPECT_EQ(rig.Steps(), 3) << "a run of keys";
  rig.now += std::chrono::seconds(2);
  rig.Key(46);
  rig.Key(47);
  rig.Key(46);
  rig.Key(45);
  EXPECT_EQ(rig.Steps(), 3) << "back where the run began";
  EXPECT_EQ(name_after([&] { rig.controller.PressIcon(0); }), "Bottom 45%") << "no change";
  rig.controller.MoveSlider(0, 5);
  EXPECT_EQ(name_after([&] { rig.controller.PressIcon(0); }), "Top -32");
  EXPECT_EQ(name_after([&] { rig.controller.SetSymmetry(kVertical, true); }), "UD Symmetry");
  EXPECT_EQ(name_after([&] { rig.controller.ToggleProjection(kHorizontal); }), "Projecting right");
  EXPECT_EQ(name_after([&] { rig.controller.SwapAxes(); }), "Swap Axes");
  for (const double y : {0.9, 0.8}) {
    rig.global.Correction.Curves[kVertical].CorreDataPts[1].Y = y;
    rig.controller.CurveChanged(y == 0.8);
  }
  EXPECT_EQ(rig.controller.UndoName(), "Curve");
  EXPECT_EQ(name_after([&] { rig.controller.Initialize(); }), "Initialize");
  const int steps = rig.Steps();
  rig.controller.Undo();
  EXPECT_EQ(rig.controller.RedoName(), "Initialize");
  rig.Drag(1, 3);
  EXPECT_EQ(rig.controller.RedoName(), "") << "another way was taken";
  EXPECT_EQ(rig.Steps(), steps);
}

TEST(CorrectionSteps, UndoShowsItsGroupSendsAndAsksForNothingThatIsSaved) {
  StepsRig rig;
  rig.DragAndSave();
  rig.controller.SelectGroup(3);
  rig.Drag(0, 9);
  rig.controller.SelectGroup(0);
  rig.library.calls.clear();
  rig.controller.Undo();
  EXPECT_EQ(rig.controller.Group(), 3);
  EXPECT_FALSE(rig.library.calls.empty());
  EXPECT_FALSE(rig.controller.HasUnsavedChanges());
}

TEST(CorrectionSteps, AScreenTypeGivesItsFileBack) {
  StepsRig rig;
  rig.DragAndSave();
  rig.controller.SelectScreenType(4);
  EXPECT_TRUE(rig.global.CurrentFile.empty());
  rig.controller.Undo();
  EXPECT_EQ(rig.global.CurrentFile, rig.temp / "first.wlt");
  EXPECT_EQ(rig.V().Distortion, 40);
  EXPECT_FALSE(rig.controller.HasUnsavedChanges());
  rig.controller.Redo();
  EXPECT_TRUE(rig.global.CurrentFile.empty());
  EXPECT_FALSE(rig.controller.HasUnsavedChanges());
  rig.controller.OpenFile(rig.temp / "first.wlt");
  EXPECT_EQ(rig.controller.UndoName() + rig.controller.RedoName(), "");

  // Where the type changes nothing, the step before it is no way to another file.
  rig.controller.Initialize();
  EXPECT_TRUE(rig.controller.Save());
  rig.controller.SelectScreenType(0);
  rig.controller.Undo();
  EXPECT_TRUE(rig.global.CurrentFile.empty());
  EXPECT_EQ(rig.V().Distortion, 40);
}

TEST(CorrectionSteps, ARandomWalkLeadsBackAndForth) {
  StepsRig rig;
  rig.global.Settings.AutoApply = 0;
  rig.global.Settings.DemoMode = 1;
  std::mt19937 random(20'261'121);
  const auto pick = [&](int count) { return static_cast<int>(random() % unsigned(count)); };
  const std::string start = rig.Saved();
  for (int gesture = 0; gesture < 10'000; ++gesture) {
    rig.now += std::chrono::milliseconds(pick(3000));
    switch (pick(9)) {
      case 0:
        rig.controller.SetSymmetry(static_cast<Axis>(pick(2)), pick(2) == 1);
        break;
      case 1:
        rig.controller.ToggleProjection(static_cast<Axis>(pick(2)));
        break;
      case 2:
        rig.controller.CopyAxis(pick(2) == 1 ? kVertical : kHorizontal,
                                pick(2) == 1 ? kVertical : kHorizontal);
        break;
      case 3:
        if (pick(20) == 0) rig.controller.Initialize();
        break;
      case 4:
        rig.controller.Undo();
        break;
      case 5:
        rig.Key(pick(4));
        break;
      default:
        rig.controller.SelectGroup(pick(kGroupCount));
        rig.Drag(pick(2), pick(30) - 15);
    }
  }
  const std::string end = rig.Saved();
  const int steps = rig.Steps();
  EXPECT_GT(steps, 3000);
  EXPECT_EQ(rig.Saved(), end);
  for (int step = 0; step < steps; ++step) rig.controller.Undo();
  EXPECT_EQ(rig.Saved(), start);
}

TEST(CorrectionSteps, CopiedAxesKeepWhatTheirSlidersReach) {
  // flags H and V, the vertical centre, and the horizontal one afterwards
  const std::tuple<int, int, int, int> rows[] = {
      {0, 0, -40, -40}, {1, 1, 40, 40}, {1, 0, -40, 40}, {0, 1, 60, -60}, {0, 0, 90, 16}};
  for (const auto& [flag_h, flag_v, vertical, horizontal] : rows) {
    SCOPED_TRACE(vertical);
    CorrectionData correction;
    correction.Projection = {static_cast<std::int16_t>(flag_h), static_cast<std::int16_t>(flag_v)};
    correction.Axes[kVertical] = {30, static_cast<std::int16_t>(vertical), 3, 4, 500, 1};
    correction.Axes[kHorizontal] = {-20, 0, 1, 2, -7, 0};
    correction.Curves[kVertical].CorrePointNum = 5;
    CorrectionData copied = correction, swapped = correction;
    CopyAxis(copied, kVertical, kHorizontal);
    EXPECT_EQ(copied.Axes[kHorizontal],
              (AxisParameters{30, static_cast<std::int16_t>(horizontal), 3, 4, 500, 1}));
    EXPECT_EQ(copied.Curves[kHorizontal].CorrePointNum, 5);
    SwapAxes(swapped);
    EXPECT_EQ(swapped.Axes[kHorizontal], copied.Axes[kHorizontal]);
    EXPECT_EQ(swapped.Axes[kVertical].Distortion, -20);
    EXPECT_EQ(swapped.Curves[kVertical].CorrePointNum, 2);
  }
}

TEST(CorrectionSteps, ComparingEndsWithTheNextCorrectionSent) {
  ControllerRig rig;
  rig.V().Distortion = 9;
  rig.controller.SetComparing(true);
  EXPECT_TRUE(rig.controller.Comparing());
  EXPECT_EQ(rig.Frames(), kInitializeFrames);
  EXPECT_EQ(rig.V().Distortion, 9);
  rig.controller.SetComparing(false);
  EXPECT_FALSE(rig.controller.Comparing());
  rig.ExpectApplied(true);
  rig.controller.SetComparing(true);
  rig.controller.MoveSlider(1, 10);
  rig.controller.ReleaseSlider();
  EXPECT_FALSE(rig.controller.Comparing());
  rig.library.calls.clear();
  rig.library.results[0] = kOpenConnect;
  rig.controller.SetComparing(true);
  EXPECT_FALSE(rig.controller.Comparing()) << "the projector was not cleared";
}

}  // namespace
}  // namespace warpline
