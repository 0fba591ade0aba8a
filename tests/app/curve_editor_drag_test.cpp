#include <optional>
#include <string>
#include <vector>

#include "tests/app/curve_editor_bench.h"

namespace warpline {
namespace {

const Points kFive = {{0, 0.8}, {0.2, 0.9}, {0.5, 1}, {0.8, 0.9}, {1, 0.8}};
const Points kSix = {{0, 0.8}, {0.2, 0.84}, {0.4, 0.9}, {0.6, 0.9}, {0.8, 0.84}, {1, 0.8}};

struct DragCase {
  std::string name;
  CurveDefinition curve;
  int point;
  GraphPosition to;
  Points expected;
};

std::vector<DragCase> FreeDragCases() {
  const auto straight = Curve(kStraightLine, kFour);
  return {
      {"within the bounds", straight, 1, {200, 100}, {{0, 0.8}, {0.4, 0.85}, {0.7, 0.9}, {1, 0.8}}},
      {"above the top", straight, 1, {150, 24}, {{0, 0.8}, {0.3, 1}, {0.7, 0.9}, {1, 0.8}}},
      {"far above the top", straight, 1, {150, -9999}, {{0, 0.8}, {0.3, 1}, {0.7, 0.9}, {1, 0.8}}},
      {"below the foot", straight, 1, {150, 151}, {{0, 0.8}, {0.3, 0.75}, {0.7, 0.9}, {1, 0.8}}},
      {"first point", straight, 0, {200, 100}, {{0, 0.85}, {0.3, 0.9}, {0.7, 0.9}, {1, 0.8}}},
      {"last point", straight, 3, {200, 100}, {{0, 0.8}, {0.3, 0.9}, {0.7, 0.9}, {1, 0.85}}},
      {"left neighbour", straight, 1, {14, 75}, {{0, 0.8}, {0.03, 0.9}, {0.7, 0.9}, {1, 0.8}}},
      {"right neighbour", straight, 1, {336, 75}, {{0, 0.8}, {0.67, 0.9}, {0.7, 0.9}, {1, 0.8}}},
      {"X positions fixed",
       Curve(kStraightLine, kFour, {true, false}),
       1,
       {200, 100},
       {{0, 0.8}, {0.3, 0.85}, {0.7, 0.9}, {1, 0.8}}},
      {"twice the distance in an approximation",
       Curve(kCubic, kFour),
       1,
       {-5, 75},
       {{0, 0.8}, {0.06, 0.9}, {0.7, 0.9}, {1, 0.8}}},
      {"twice the distance on the right",
       Curve(kQuadratic, kFour),
       2,
       {600, 75},
       {{0, 0.8}, {0.3, 0.9}, {0.94, 0.9}, {1, 0.8}}},
      {"B-spline",
       Curve(kBSpline, kFour),
       2,
       {0, 75},
       {{0, 0.8}, {0.3, 0.9}, {0.33, 0.9}, {1, 0.8}}},
      {"the upper of crossing bounds",
       Curve(kStraightLine, {{0, 0.8}, {0.5, 0.9}, {0.52, 0.9}, {0.54, 0.9}, {1, 0.8}}),
       2,
       {260, 75},
       {{0, 0.8}, {0.5, 0.9}, {0.51, 0.9}, {0.54, 0.9}, {1, 0.8}}},
  };
}

std::vector<DragCase> SymmetricDragCases() {
  const Flags on{false, true};
  const auto four = Curve(kStraightLine, kFour, on);
  const auto five = Curve(kStraightLine, kFive, on);
  const auto six = Curve(kCubic, kSix, on);
  return {
      {"left of the centre", four, 1, {400, 50}, {{0, 0.8}, {0.47, 0.95}, {0.53, 0.95}, {1, 0.8}}},
      {"right of the centre", four, 2, {100, 50}, {{0, 0.8}, {0.47, 0.95}, {0.53, 0.95}, {1, 0.8}}},
      {"left point outwards", four, 1, {0, 75}, {{0, 0.8}, {0.03, 0.9}, {0.97, 0.9}, {1, 0.8}}},
      {"right point outwards", four, 2, {500, 75}, {{0, 0.8}, {0.03, 0.9}, {0.97, 0.9}, {1, 0.8}}},
      {"first point", four, 0, {40, 75}, {{0, 0.9}, {0.3, 0.9}, {0.7, 0.9}, {1, 0.9}}},
      {"fixed X",
       Curve(kStraightLine, kFour, {true, true}),
       2,
       {400, 50},
       {{0, 0.8}, {0.3, 0.95}, {0.7, 0.95}, {1, 0.8}}},
      {"middle point",
       five,
       2,
       {300, 50},
       {{0, 0.8}, {0.2, 0.9}, {0.5, 0.95}, {0.8, 0.9}, {1, 0.8}}},
      {"beside the middle point",
       five,
       1,
       {400, 75},
       {{0, 0.8}, {0.47, 0.9}, {0.5, 1}, {0.53, 0.9}, {1, 0.8}}},
      {"an outer point of six keeps to its neighbour",
       six,
       1,
       {400, 75},
       {{0, 0.8}, {0.34, 0.9}, {0.4, 0.9}, {0.6, 0.9}, {0.66, 0.9}, {1, 0.8}}},
      {"an inner point of six keeps to the centre's bound",
       six,
       3,
       {0, 75},
       {{0, 0.8}, {0.2, 0.84}, {0.47, 0.9}, {0.53, 0.9}, {0.8, 0.84}, {1, 0.8}}},
      {"the upper of bounds that cross at the centre",
       Curve(kStraightLine,
             {{0, 0.8}, {0.47, 0.9}, {0.48, 0.9}, {0.52, 0.9}, {0.53, 0.9}, {1, 0.8}}, on),
       2,
       {245, 75},
       {{0, 0.8}, {0.47, 0.9}, {0.47, 0.9}, {0.53, 0.9}, {0.53, 0.9}, {1, 0.8}}},
  };
}

void ExpectDrags(const std::vector<DragCase>& cases) {
  for (const DragCase& row : cases) {
    SCOPED_TRACE(row.name);
    EditorBench bench(row.curve);
    const GraphPosition from = bench.editor.GraphPositions()[static_cast<std::size_t>(row.point)];
    bench.editor.Press(from.x, from.y);
    ASSERT_EQ(bench.editor.SelectedPoint(), row.point);
    EXPECT_FALSE(bench.editor.Changed());
    bench.editor.Drag(row.to.x, row.to.y);
    ExpectPoints(bench.editor.Curve(), row.expected);
    EXPECT_TRUE(bench.editor.Changed());
    bench.editor.Release();
    bench.editor.Drag(from.x, from.y);
    ExpectPoints(bench.editor.Curve(), row.expected);
  }
}

TEST(CurveEditorDrag, HoldsAPointWithinItsBounds) {
  ExpectDrags(FreeDragCases());
}

TEST(CurveEditorDrag, MovesThePartnerOfASymmetricCurve) {
  ExpectDrags(SymmetricDragCases());
}

TEST(CurveEditorPress, TakesTheFirstPointWithinFourUnits) {
  // Points 1 and 2 lie at (150, 75) and (156, 75).
  const auto curve = Curve(kStraightLine, {{0, 0.8}, {0.3, 0.9}, {0.312, 0.9}, {1, 0.8}});
  const struct {
    GraphPosition at;
    std::optional<int> grabbed;
  } cases[] = {
      {{150, 75}, 1},
      {{154, 79}, 1},
      {{152, 71}, 1},
      {{155, 75}, 2},
      {{160, 79}, 2},
      {{161, 75}, std::nullopt},
      {{0, 125}, 0},
      {{-4, 121}, 0},
      {{150, 80}, std::nullopt},
      {{504, 129}, 3},
      {{145, 75}, std::nullopt},
  };
  EditorBench bench(curve);
  for (const auto& row : cases) {
    bench.editor.Press(row.at.x, row.at.y);
    EXPECT_EQ(bench.editor.SelectedPoint(), row.grabbed) << row.at.x << ", " << row.at.y;
    EXPECT_EQ(bench.editor.Dragging(), row.grabbed.has_value());
  }
  bench.editor.Press(300, 300);
  bench.editor.Drag(200, 100);
  EXPECT_EQ(bench.editor.Curve(), curve);
}

TEST(CurveEditorKeys, ChooseAndMoveAPointUnderTheSameBounds) {
  EditorBench bench(Curve(kStraightLine, {{0, 0.8}, {1.0 / 3, 0.9}, {1, 0.8}}));
  CurveEditor& editor = bench.editor;
  EXPECT_EQ(editor.ReadOut().x, "");
  editor.MoveSelected(1, 1);
  EXPECT_FALSE(editor.Changed());
  ASSERT_TRUE(editor.SelectPrevious());
  EXPECT_EQ(editor.SelectedPoint(), 2);
  ASSERT_TRUE(editor.SelectPrevious());
  editor.MoveSelected(0, -10);
  EXPECT_EQ(PointsOf(editor.Curve())[1].X, 1.0 / 3) << "an upright step leaves X alone";
  EXPECT_EQ(editor.ReadOut().x, "0.333");
  EXPECT_EQ(editor.ReadOut().y, "0.920");
  editor.MoveSelected(10, 0);
  ExpectPoints(editor.Curve(), {{0, 0.8}, {0.354, 0.92}, {1, 0.8}});
  editor.MoveSelected(-1000, 1000);
  ExpectPoints(editor.Curve(), {{0, 0.8}, {0.03, 0.75}, {1, 0.8}});

  EXPECT_TRUE(editor.SelectNext());
  EXPECT_FALSE(editor.SelectNext()) << "behind the last point the focus goes on";
  EXPECT_EQ(editor.SelectedPoint(), std::nullopt);
  EXPECT_TRUE(editor.SelectNext());
  EXPECT_EQ(editor.SelectedPoint(), 0);
  EXPECT_FALSE(editor.SelectPrevious());
}

}  // namespace
}  // namespace warpline
