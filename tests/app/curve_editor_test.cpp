#include "app/curve_editor.h"

#include <gtest/gtest.h>

#include "core/tool_texts.h"
#include "tests/support/curves.h"
#include "tests/support/engine_rig.h"

namespace warpline {
namespace {

Points PointsOf(const CurveDefinition& curve) {
  return {curve.CorreDataPts.begin(), curve.CorreDataPts.begin() + curve.CorrePointNum};
}

void ExpectPoints(const CurveDefinition& curve, const Points& expected) {
  const Points points = PointsOf(curve);
  ASSERT_EQ(points.size(), expected.size());
  for (std::size_t i = 0; i < points.size(); ++i) {
    EXPECT_NEAR(points[i].X, expected[i].X, 1e-10) << "X of point " << i;
    EXPECT_NEAR(points[i].Y, expected[i].Y, 1e-10) << "Y of point " << i;
  }
}

// An editor of the vertical curve, with everything that it needs.
struct EditorBench : EngineRig {
  explicit EditorBench(const CurveDefinition& curve)
      : editor((global.Correction.Curves[kVertical] = curve, global), kVertical, files, messages) {}

  CurveEditor editor;
};

const Points kFour = {{0, 0.8}, {0.3, 0.9}, {0.7, 0.9}, {1, 0.8}};
const Points kHill = {{0, 0.8}, {0.3, 1}, {0.6, 0.9}, {0.7, 0.95}, {1, 0.85}};

CurveDefinition Line(const Points& points, Flags flags = {}) {
  return Curve(kStraightLine, points, flags);
}

using Act = std::function<bool(CurveEditor&)>;

Act Count(int count) {
  return [count](CurveEditor& editor) { return editor.SetPointCount(count); };
}
Act Entry(int entry) {
  return [entry](CurveEditor& editor) { return editor.SetInterpolation(entry); };
}

TEST(CurveEditorCount, SpreadsThePointsAlongTheCurve) {
  const auto arch = Curve(kQuadratic, {{0, 0.8}, {0.5, 1}, {1, 0.8}});
  const auto cubic = Curve(kCubic, kHill), spline = Curve(kBSpline, kHill);
  const auto line = Line({{0, 0.75}, {1, 1}}), hill = Line(kHill);
  const auto even = Line({{0, 0.8}, {1, 1}}, {false, true});
  const auto odd = Curve(kQuadratic, kHill, {false, true});
  using Y = std::vector<double>;
  const Y half{0.825714285714, 0.933755102041, 0.93936909621, 0.933755102041, 0.825714285714};
  const Y quadratic{0.897142857143, 0.876408163265, 0.75, 0.75, 0.75};
  const Y by_cubic{0.810714285714, 0.957755102041, 0.948883381924, 0.934171095377, 0.85305271732};
  const Y by_spline{0.8, 0.949090909091, 0.916815426997, 0.95};
  // The last are the heights of points spread evenly.
  const std::tuple<const char*, CurveDefinition, Act, std::int16_t, Y> cases[] = {
      {"points moved count for later ones", arch, Count(4), kQuadratic, {0.79, 1, 0.7715, 0.75}},
      {"new points of a line at its foot", line, Count(4), kStraightLine, {0.75, 1, 0.75, 0.75}},
      {"fewer points keep the first heights", hill, Count(3), kStraightLine, {0.8, 1, 0.9}},
      {"the left half counts", even, Count(4), kStraightLine, {0.8, 1, 1, 0.8}},
      {"the left half and the middle point count", odd, Count(5), kQuadratic, half},
      {"three points become five by the quadratic", arch, Entry(3), kQuartic, quadratic},
      {"the former cubic places the points", cubic, Entry(1), kQuadratic, by_cubic},
      {"a spline of the line's points", hill, Entry(4), kBSpline, {0.8, 1, 0.9, 0.95, 0.85}},
      {"a spline with fewer points", spline, Count(4), kBSpline, by_spline},
  };
  for (const auto& [name, curve, act, interpolation, heights] : cases) {
    SCOPED_TRACE(name);
    EditorBench bench(curve);
    EXPECT_TRUE(act(bench.editor));
    EXPECT_EQ(bench.editor.Curve().CorreInterp, interpolation);
    Points expected;
    const double last = static_cast<double>(heights.size()) - 1;
    for (const double y : heights) {
      expected.push_back({static_cast<double>(expected.size()) / last, y});
    }
    ExpectPoints(bench.editor.Curve(), expected);
  }
  EditorBench bench(Curve(kBSpline, kHill));
  EXPECT_TRUE(bench.editor.SetInterpolation(4));
  EXPECT_EQ(PointsOf(bench.editor.Curve()), kHill) << "the entry in force changes nothing";
  bench.editor.Press(150, 25);
  EXPECT_TRUE(bench.editor.Dragging());
  bench.editor.SetPointCount(4);
  EXPECT_FALSE(bench.editor.Dragging()) << "the grab is released";
  EXPECT_EQ(bench.editor.SelectedPoint(), std::nullopt);
}

TEST(CurveEditorCount, IsHeldToTheLimitsOfEachInterpolation) {
  const std::tuple<int, int, int> cases[] = {
      {0, 2, 189}, {1, 3, 190}, {2, 4, 191}, {3, 5, 192}, {4, 4, 217}};
  for (const auto& [entry, fewest, text] : cases) {
    SCOPED_TRACE(entry);
    EditorBench bench(Line({{0, 0.75}, {1, 1}}));
    CurveEditor& editor = bench.editor;
    EXPECT_TRUE(editor.SetInterpolation(entry));
    EXPECT_EQ(editor.Curve().CorrePointNum, fewest);
    EXPECT_TRUE(editor.SetPointCount(100));
    EXPECT_EQ(editor.Curve().CorrePointNum, 16);
    EXPECT_TRUE(editor.SetPointCount(-3));
    EXPECT_EQ(editor.Curve().CorrePointNum, fewest);
    EXPECT_EQ(editor.InterpolationIndex(), entry);
    EXPECT_EQ(kInterpolationEntries[static_cast<std::size_t>(entry)].text, text);
  }
}

using SymmetryCase = std::tuple<const char*, CurveDefinition, Points>;

TEST(CurveEditorSymmetry, TheLeftHalfCountsAtOnce) {
  const auto even = Line({{0, 0.8}, {0.2, 0.9}, {0.7, 1}, {1, 0.75}});
  const auto odd = Line({{0, 0.8}, {0.2, 0.9}, {0.6, 1}, {0.9, 0.85}, {1, 0.75}});
  const auto close = Line({{0, 0.8}, {0.49, 0.9}, {0.7, 1}, {1, 0.75}});
  const auto beyond = Line({{0, 0.8}, {0.6, 0.9}, {0.7, 1}, {1, 0.75}});
  const auto odd_beyond = Curve(kQuartic, {{0, 0.8}, {0.5, 0.9}, {0.7, 1}, {0.9, 0.85}, {1, 0.75}});
  const auto two_beyond =
      Line({{0, 0.8}, {0.6, 0.9}, {0.7, 1}, {0.8, 0.9}, {0.9, 0.85}, {1, 0.75}});
  const SymmetryCase cases[] = {
      {"even", even, {{0, 0.8}, {0.2, 0.9}, {0.8, 0.9}, {1, 0.8}}},
      {"odd", odd, {{0, 0.8}, {0.2, 0.9}, {0.5, 1}, {0.8, 0.9}, {1, 0.8}}},
      {"two points", Line({{0, 0.75}, {1, 1}}), {{0, 0.75}, {1, 0.75}}},
      {"close to the centre", close, {{0, 0.8}, {0.49, 0.9}, {0.51, 0.9}, {1, 0.8}}},
      {"even, beyond it", beyond, {{0, 0.8}, {0.47, 0.9}, {0.53, 0.9}, {1, 0.8}}},
      {"odd, beyond it", odd_beyond, {{0, 0.8}, {0.44, 0.9}, {0.5, 1}, {0.56, 0.9}, {1, 0.8}}},
      {"two beyond it",
       two_beyond,
       {{0, 0.8}, {0.44, 0.9}, {0.47, 1}, {0.53, 1}, {0.56, 0.9}, {1, 0.8}}},
  };
  for (const auto& [name, curve, expected] : cases) {
    SCOPED_TRACE(name);
    EditorBench bench(curve);
    EXPECT_TRUE(bench.editor.SetSymmetry(true));
    EXPECT_EQ(bench.editor.Curve().CorreSymmetry, 1);
    ExpectPoints(bench.editor.Curve(), expected);
    const Points before = PointsOf(bench.editor.Curve());
    EXPECT_TRUE(bench.editor.SetSymmetry(false));
    EXPECT_EQ(bench.editor.Curve().CorreSymmetry, 0);
    EXPECT_EQ(PointsOf(bench.editor.Curve()), before);
  }
}

TEST(CurveEditorReverse, MirrorsTheCurveAndTwiceIsTheCurveAgain) {
  EditorBench bench(Curve(kBSpline, kHill));
  bench.editor.Reverse();
  ExpectPoints(bench.editor.Curve(), {{0, 0.85}, {0.3, 0.95}, {0.4, 0.9}, {0.7, 1}, {1, 0.8}});
  bench.editor.Reverse();
  ExpectPoints(bench.editor.Curve(), kHill);
}

TEST(CurveEditorNormalize, ScalesOnlyALargeSpreadAndLiftsTheTop) {
  const auto beside = Line({{0, 0.8}, {0.2509, 0.82509}, {1, 0.9}});
  const auto spline = Curve(kBSpline, {{0, 0.8}, {0.5, 1}, {1, 0.8}});  // its top is at X = 0.5
  const auto no_segment = Curve(kBSpline, {{0, 0.8}, {1, 0.9}});
  const SymmetryCase cases[] = {
      {"of 0.5", Line({{0, 0.5}, {0.5, 1}, {1, 0.7}}), {{0, 0.75}, {0.5, 1}, {1, 0.85}}},
      {"of 0.1", Line({{0, 0.8}, {0.5, 0.9}, {1, 0.85}}), {{0, 0.9}, {0.5, 1}, {1, 0.95}}},
      {"of 0.25", Line({{0, 0.75}, {1, 1}}), {{0, 0.75}, {1, 1}}},
      {"the height of the nearest sample", beside, {{0, 0.9}, {0.2509, 0.925}, {1, 1}}},
      {"down onto the spline", spline, {{0, 0.9}, {0.5, 1}, {1, 0.9}}},
      {"a spline without a segment", no_segment, {{0, 1}, {1, 1}}},
  };
  for (const auto& [name, curve, expected] : cases) {
    SCOPED_TRACE(name);
    EditorBench bench(curve);
    EXPECT_TRUE(bench.editor.Normalize());
    ExpectPoints(bench.editor.Curve(), expected);
    EXPECT_TRUE(bench.editor.Changed());
  }
}

TEST(CurveEditorSeed, ReplacesTheCurveButNotWhenCancelled) {
  const auto curve = Curve(kBSpline, kHill, {false, true});
  EditorBench bench(curve);
  EXPECT_TRUE(bench.editor.Seed(kNoShape));
  EXPECT_EQ(bench.editor.Curve(), curve);
  EXPECT_FALSE(bench.editor.Changed());
  EXPECT_TRUE(bench.editor.Seed(kArch));
  EXPECT_EQ(bench.editor.Curve(), Curve(kQuadratic, {{0, 0.8}, {0.5, 1}, {1, 0.8}}, {true, false}));
  EXPECT_TRUE(bench.editor.Changed());
  EXPECT_TRUE(bench.editor.Seed(kDiagonalLine));
  EXPECT_EQ(bench.editor.Curve(), Line({{0, 0.75}, {1, 1}}, {true, false}));
}

TEST(CurveEditorApply, IsTheOnlyWayIntoTheLiveCurve) {
  const auto curve = Line(kFour);
  EditorBench bench(curve);
  const LSSglobal before = bench.global;
  bench.editor.SetFixed(true);
  bench.editor.Press(150, 75);
  bench.editor.Drag(160, 75);
  bench.editor.Drag(160, 50);
  EXPECT_EQ(bench.global.Correction, before.Correction);
  EXPECT_TRUE(bench.editor.Changed());
  bench.editor.Apply(bench.global);
  EXPECT_FALSE(bench.editor.Changed());
  EXPECT_EQ(bench.global.Correction.Curves[kHorizontal], before.Correction.Curves[kHorizontal]);
  EXPECT_EQ(bench.global.Correction.Curves[kVertical],
            Line({{0, 0.8}, {0.3, 0.95}, {0.7, 0.9}, {1, 0.8}}, {true, false}));
  bench.editor.SetFixed(true);
  EXPECT_FALSE(bench.editor.Changed());
}

TEST(CurveEditorApply, ForNowCanBeTakenBack) {
  EditorBench bench(Line(kFour));
  CurveEditor& editor = bench.editor;
  const CurveDefinition& live = bench.global.Correction.Curves[kVertical];
  editor.Press(150, 75);
  editor.Drag(150, 50);
  EXPECT_FALSE(editor.ApplyForNow(bench.global)) << "in the middle of a drag";
  editor.Release();
  EXPECT_TRUE(editor.ApplyForNow(bench.global));
  EXPECT_EQ(live, editor.Curve());
  EXPECT_FALSE(editor.Changed());
  EXPECT_TRUE(editor.TakeBack(bench.global));
  EXPECT_EQ(live, Line(kFour));
  editor.Apply(bench.global);
  EXPECT_FALSE(editor.TakeBack(bench.global)) << "confirmed";
  bench.global.Correction.Curves[kVertical] = Curve(kQuartic, kFour);
  CurveEditor faulty(bench.global, kVertical, bench.files, bench.messages);
  faulty.SetFixed(true);
  EXPECT_FALSE(faulty.ApplyForNow(bench.global)) << "cannot be computed";
  EXPECT_TRUE(faulty.Changed());
  EXPECT_TRUE(bench.display.messages.empty());
}

TEST(CurveEditorFiles, WhatIsExportedComesBackByImport) {
  const auto curve = Curve(kBSpline, kHill, {true, true});
  EditorBench bench(curve);
  ASSERT_TRUE(bench.editor.Export(bench.temp / "hill.wls"));
  EXPECT_FALSE(bench.editor.Changed());
  bench.editor.Seed(kTriangle);
  bench.editor.Press(250, 25);
  ASSERT_TRUE(bench.editor.Import(bench.temp / "hill.wls"));
  EXPECT_EQ(bench.editor.Curve(), curve);
  EXPECT_FALSE(bench.editor.Dragging());
  EXPECT_TRUE(bench.editor.Changed());
  EXPECT_TRUE(bench.display.messages.empty());
}

TEST(CurveEditorFiles, AnImportArrivesAsItIs) {
  EditorBench bench(Line(kFour));
  // Two points are too few for a spline chosen by hand, and the curve is not symmetric.
  const auto path = bench.temp.Write(
      "two.wls",
      "[Warpline Shape File]\nCorreFixed=0\nCorreSymmetry=1\nCorrePointNum=2\nCorreInterp=5\n"
      "CorreDataPtsX0=0\nCorreDataPtsY0=800000\nCorreDataPtsX1=1000000\nCorreDataPtsY1=900000\n");
  ASSERT_TRUE(bench.editor.Import(path));
  EXPECT_EQ(PointsOf(bench.editor.Curve()), (Points{{0, 0.8}, {1, 0.9}}));
  EXPECT_EQ(bench.editor.InterpolationIndex(), 4);
  EXPECT_EQ(bench.editor.Curve().CorreSymmetry, 1);
  const SampledCurve sampled = bench.editor.Sampled();
  EXPECT_FALSE(sampled.faulty);
  EXPECT_EQ(sampled.samples, std::vector<double>(501, 0.0));
  EXPECT_TRUE(bench.editor.SetPointCount(2));
  EXPECT_EQ(bench.editor.Curve().CorrePointNum, 4);
  EXPECT_TRUE(bench.display.messages.empty());
  EditorBench sparse(Curve(kQuartic, kFour));
  ASSERT_TRUE(sparse.editor.Export(sparse.temp / "sparse.wls"));
  EXPECT_TRUE(sparse.editor.Import(sparse.temp / "sparse.wls"));
  EXPECT_EQ(sparse.display.Texts(), Texts{TextOf(sparse.global, ToolText::kCurveFaulty)});
}

TEST(CurveEditorFiles, ARefusedImportChangesNothing) {
  const std::string head = "[Warpline Shape File 2.0]\nCorrePointNum=2\n";
  const std::pair<std::string, std::string> cases[] = {
      {"CorreInterp=5\n", "The file format is corrupted."},
      {head + "CorreDataPtsX01=900000\nCorreDataPtsY00=900000\n",
       "The parameter value is not correct."},
      {head + "CorreDataPtsX00=99999999999\n", "[1] Wrong value."},
  };
  const auto curve = Line(kFour, {true, false});
  for (const auto& [content, text] : cases) {
    SCOPED_TRACE(content);
    EditorBench bench(curve);
    bench.editor.Press(150, 75);
    EXPECT_FALSE(bench.editor.Import(bench.temp.Write("a.wls", content)));
    EXPECT_EQ(bench.editor.Curve(), curve);
    EXPECT_EQ(bench.editor.SelectedPoint(), 1);
    EXPECT_FALSE(bench.editor.Changed());
    EXPECT_EQ(bench.display.Texts(), std::vector{text});
  }
  EditorBench bench(curve);
  EXPECT_FALSE(bench.editor.Import(bench.temp / "missing.wls"));
  EXPECT_FALSE(bench.editor.Export(bench.temp / "missing" / "out.wls"));
  EXPECT_EQ(bench.display.messages.size(), 2u);
}

TEST(CurveEditorFaults, AreReportedAndLeaveTheRecord) {
  // Such curves come from files: two equal X values, and a quartic of three points.
  const auto doubled = Curve(kQuadratic, {{0, 0.8}, {0, 0.9}, {1, 0.8}});
  const auto sparse = Curve(kQuartic, {{0, 0.8}, {0.5, 1}, {1, 0.8}});
  const std::tuple<CurveDefinition, Act, std::string> cases[] = {
      {doubled, [](CurveEditor& editor) { return editor.Normalize(); }, "[3] Wrong value."},
      {sparse, Entry(0), "[3] Wrong value."},
      {Line(kFour), Entry(-1), "[2] Wrong value."},
  };
  for (const auto& [curve, act, text] : cases) {
    EditorBench bench(curve);
    EXPECT_FALSE(act(bench.editor));
    EXPECT_EQ(bench.editor.Curve(), curve);
    EXPECT_FALSE(bench.editor.Changed());
    EXPECT_EQ(bench.display.Texts(), std::vector{text});
  }
  EditorBench bench(doubled);
  EXPECT_TRUE(bench.editor.Sampled().faulty);
  EXPECT_TRUE(bench.editor.Sampled().samples.empty());
  EXPECT_TRUE(bench.display.messages.empty()) << "drawing shows no message";
}

// Name, curve, point, where it is dragged, and where it is afterwards; its partner in a symmetric
// curve mirrors it.
using DragCase = std::tuple<const char*, CurveDefinition, int, GraphPosition, CurvePoint>;

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
  for (DragCase& row : SymmetricDragCases()) cases.push_back(row);
  for (const auto& [name, curve, point, to, moved] : cases) {
    SCOPED_TRACE(name);
    Points expected = PointsOf(curve);
    const auto index = static_cast<std::size_t>(point);
    if (curve.CorreSymmetry == 1) expected[expected.size() - 1 - index] = {1 - moved.X, moved.Y};
    expected[index] = moved;
    EditorBench bench(curve);
    const GraphPosition from = bench.editor.GraphPositions()[index];
    bench.editor.Press(from.x, from.y);
    bench.editor.Drag(to.x, to.y);
    bench.editor.CancelDrag();
    EXPECT_EQ(bench.editor.Curve(), curve);
    bench.editor.Press(from.x, from.y);
    ASSERT_EQ(bench.editor.SelectedPoint(), point);
    EXPECT_FALSE(bench.editor.Changed());
    bench.editor.Drag(to.x, to.y);
    ExpectPoints(bench.editor.Curve(), expected);
    EXPECT_TRUE(bench.editor.Changed());
    bench.editor.Release();
    bench.editor.Drag(from.x, from.y);
    ExpectPoints(bench.editor.Curve(), expected);
    // Typed coordinates know the same bounds.
    EditorBench typing(curve);
    typing.editor.Press(from.x, from.y);
    typing.editor.SetSelectedY(GraphY(to.y));
    typing.editor.SetSelectedX(GraphX(to.x));
    ExpectPoints(typing.editor.Curve(), expected);
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

  editor.SetSelectedX(0.12345);
  editor.SetSelectedY(0.87654321);
  ExpectPoints(editor.Curve(), {{0, 0.8}, {0.12345, 0.87654321}, {1, 0.8}});
  EXPECT_NEAR(editor.BoundsOfX()->lowest, 0.03, 1e-10);
  EXPECT_NEAR(editor.BoundsOfX()->highest, 0.97, 1e-10);

  EXPECT_TRUE(editor.SelectNext());
  EXPECT_EQ(editor.BoundsOfX(), std::nullopt) << "the last point's X stays";
  EXPECT_TRUE(editor.BoundsOfY());
  EXPECT_FALSE(editor.SelectNext()) << "behind the last point the focus goes on";
  EXPECT_EQ(editor.SelectedPoint(), std::nullopt);
  EXPECT_TRUE(editor.SelectNext());
  EXPECT_EQ(editor.SelectedPoint(), 0);
  EXPECT_FALSE(editor.SelectPrevious());
}

}  // namespace
}  // namespace warpline
