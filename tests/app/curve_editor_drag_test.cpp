#include <optional>

#include "tests/app/curve_editor_bench.h"

namespace warpline {
namespace {

struct DragCase {
  const char* name;
  CurveDefinition curve;
  int point;
  GraphPosition to;
  CurvePoint moved;  // where the point is afterwards; its partner in a symmetric curve mirrors it
};

std::vector<DragCase> FreeDragCases() {
  const auto line = Line(kFour);
  const auto narrow = Line({{0, 0.8}, {0.5, 0.9}, {0.52, 0.9}, {0.54, 0.9}, {1, 0.8}});
  return {
      {"within the bounds", line, 1, {200, 100}, {0.4, 0.85}},
      {"above the top", line, 1, {150, 24}, {0.3, 1}},
      {"far above the top", line, 1, {150, -9999}, {0.3, 1}},
      {"below the foot", line, 1, {150, 151}, {0.3, 0.75}},
      {"first point", line, 0, {200, 100}, {0, 0.85}},
      {"last point", line, 3, {200, 100}, {1, 0.85}},
      {"left neighbour", line, 1, {14, 75}, {0.03, 0.9}},
      {"right neighbour", line, 1, {336, 75}, {0.67, 0.9}},
      {"X positions fixed", Line(kFour, {true, false}), 1, {200, 100}, {0.3, 0.85}},
      {"twice the distance, cubic", Curve(kCubic, kFour), 1, {-5, 75}, {0.06, 0.9}},
      {"twice the distance, quadratic", Curve(kQuadratic, kFour), 2, {600, 75}, {0.94, 0.9}},
      {"B-spline", Curve(kBSpline, kFour), 2, {0, 75}, {0.33, 0.9}},
      {"the upper of crossing bounds", narrow, 2, {260, 75}, {0.51, 0.9}},
  };
}

std::vector<DragCase> SymmetricDragCases() {
  const Flags on{false, true};
  const auto four = Line(kFour, on);
  const auto five = Line({{0, 0.8}, {0.2, 0.9}, {0.5, 1}, {0.8, 0.9}, {1, 0.8}}, on);
  const auto six =
      Curve(kCubic, {{0, 0.8}, {0.2, 0.84}, {0.4, 0.9}, {0.6, 0.9}, {0.8, 0.84}, {1, 0.8}}, on);
  const auto narrow =
      Line({{0, 0.8}, {0.47, 0.9}, {0.48, 0.9}, {0.52, 0.9}, {0.53, 0.9}, {1, 0.8}}, on);
  return {
      {"left of the centre", four, 1, {400, 50}, {0.47, 0.95}},
      {"right of the centre", four, 2, {100, 50}, {0.53, 0.95}},
      {"left point outwards", four, 1, {0, 75}, {0.03, 0.9}},
      {"right point outwards", four, 2, {500, 75}, {0.97, 0.9}},
      {"first point", four, 0, {40, 75}, {0, 0.9}},
      {"fixed X", Line(kFour, {true, true}), 2, {400, 50}, {0.7, 0.95}},
      {"middle point", five, 2, {300, 50}, {0.5, 0.95}},
      {"beside the middle point", five, 1, {400, 75}, {0.47, 0.9}},
      {"an outer point of six keeps to its neighbour", six, 1, {400, 75}, {0.34, 0.9}},
      {"an inner point of six keeps to the centre's bound", six, 3, {0, 75}, {0.53, 0.9}},
      {"the upper of bounds that cross at the centre", narrow, 2, {245, 75}, {0.47, 0.9}},
  };
}

TEST(CurveEditorDrag, HoldsAPointWithinItsBoundsAndMovesItsPartner) {
  std::vector<DragCase> cases = FreeDragCases();
  const std::size_t free = cases.size();
  for (DragCase& row : SymmetricDragCases()) cases.push_back(row);
  for (std::size_t i = 0; i < cases.size(); ++i) {
    const auto& [name, curve, point, to, moved] = cases[i];
    SCOPED_TRACE(name);
    Points expected = PointsOf(curve);
    const auto index = static_cast<std::size_t>(point);
    if (i >= free) expected[expected.size() - 1 - index] = {1 - moved.X, moved.Y};
    expected[index] = moved;
    EditorBench bench(curve);
    const GraphPosition from = bench.editor.GraphPositions()[index];
    bench.editor.Press(from.x, from.y);
    ASSERT_EQ(bench.editor.SelectedPoint(), point);
    EXPECT_FALSE(bench.editor.Changed());
    bench.editor.Drag(to.x, to.y);
    ExpectPoints(bench.editor.Curve(), expected);
    EXPECT_TRUE(bench.editor.Changed());
    bench.editor.Release();
    bench.editor.Drag(from.x, from.y);
    ExpectPoints(bench.editor.Curve(), expected);
  }
}

TEST(CurveEditorPress, TakesTheFirstPointWithinFourUnits) {
  // Points 1 and 2 lie at (150, 75) and (156, 75).
  const auto curve = Line({{0, 0.8}, {0.3, 0.9}, {0.312, 0.9}, {1, 0.8}});
  constexpr std::optional<int> none;
  const std::pair<GraphPosition, std::optional<int>> cases[] = {
      {{150, 75}, 1},    {{154, 79}, 1},    {{152, 71}, 1},    {{155, 75}, 2},
      {{160, 79}, 2},    {{161, 75}, none}, {{0, 125}, 0},     {{-4, 121}, 0},
      {{150, 80}, none}, {{504, 129}, 3},   {{145, 75}, none},
  };
  EditorBench bench(curve);
  for (const auto& [at, grabbed] : cases) {
    bench.editor.Press(at.x, at.y);
    EXPECT_EQ(bench.editor.SelectedPoint(), grabbed) << at.x << ", " << at.y;
    EXPECT_EQ(bench.editor.Dragging(), grabbed.has_value());
  }
  bench.editor.Press(300, 300);
  bench.editor.Drag(200, 100);
  EXPECT_EQ(bench.editor.Curve(), curve);
}

TEST(CurveEditorKeys, ChooseAndMoveAPointUnderTheSameBounds) {
  EditorBench bench(Line({{0, 0.8}, {1.0 / 3, 0.9}, {1, 0.8}}));
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
