#include <gtest/gtest.h>

#include <random>

#include "app/curve_editor.h"
#include "tests/support/curves.h"
#include "tests/support/engine_rig.h"

namespace warpline {
namespace {

struct CurveEditorSteps : EngineRig, testing::Test {
  void Drag() {
    const GraphPosition at = editor.GraphPositions()[1];
    editor.Press(at.x, at.y), editor.Drag(at.x, at.y - 9), editor.Drag(at.x + 9, at.y + 9);
  }
  void Key(int dy, int seconds) {
    editor.MoveSelected(0, dy), editor.ReleaseKey(), now += std::chrono::seconds(seconds);
  }

  const CurveDefinition start = Curve(kStraightLine, {{0, 0.8}, {0.3, 0.9}, {0.7, 0.85}, {1, 0.8}});
  CurveHistory::Time now;
  CurveEditor editor{(global.Correction.Curves[kVertical] = start, global), kVertical, files,
                     messages, [this] { return now; }};
};

TEST_F(CurveEditorSteps, LeadBackAndForth) {
  const std::function<void()> acts[] = {
      [this] { Drag(), editor.Release(); },
      [this] { editor.SelectNext(), Key(1, 1), Key(-7, 1); },
      [this] { editor.SelectPrevious(), editor.SetSelectedY(0.8765); },
      [this] { editor.SetPointCount(editor.Curve().CorrePointNum % 5 + 6); },
      [this] { editor.SetInterpolation((editor.InterpolationIndex() + 1) % 5); },
      [this] { editor.SetFixed(editor.Curve().CorreFixed == 0); },
      [this] { editor.SetSymmetry(editor.Curve().CorreSymmetry == 0); },
      [this] { editor.Reverse(); },
      [this] { editor.Normalize(); },
      [this] { editor.Seed(kTriangle); },
      [this] { editor.Import(temp / "start.wls"); }};
  editor.Export(temp / "start.wls");
  std::vector<CurveDefinition> walk{start};
  std::minstd_rand random;
  for (int edit = 0; edit < 2000; ++edit) {
    const std::size_t kind = random() % std::size(acts);
    acts[kind]();
    const CurveDefinition after = editor.Curve();
    const std::optional<int> point = editor.SelectedPoint();
    if (after == walk.back()) continue;
    ASSERT_TRUE(editor.Undo() && editor.Curve() == walk.back()) << kind << " is one step";
    ASSERT_TRUE(editor.Redo() && editor.Curve() == after && editor.SelectedPoint() == point);
    walk.push_back(after);
  }
  std::size_t at = walk.size() - 1;
  while (editor.Undo()) ASSERT_EQ(editor.Curve(), walk.at(--at));
  EXPECT_EQ(at, 0U);
  while (editor.Redo()) ASSERT_EQ(editor.Curve(), walk.at(++at));
  EXPECT_EQ(at + 1, walk.size());
}

TEST_F(CurveEditorSteps, EndWithARestOrApplyAndNotWithEscape) {
  editor.SelectNext(), Key(-1, 1), Key(-1, 2), Key(-1, 0), editor.Apply(global), Key(-1, 0);
  EXPECT_TRUE(editor.Undo() && !editor.Changed()) << "that was applied";
  Drag();
  EXPECT_FALSE(editor.Undo() || editor.Redo()) << "in a drag";
  editor.CancelDrag();
  EXPECT_TRUE(editor.CanRedo());
  EXPECT_TRUE(editor.Undo() && editor.Changed() && editor.Undo() && !editor.Undo());
}

}  // namespace
}  // namespace warpline
