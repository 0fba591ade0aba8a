#include "app/curve_editor.h"

#include <functional>

#include "tests/app/curve_editor_bench.h"

namespace warpline {
namespace {

struct CountCase {
  const char* name;
  CurveDefinition curve;
  std::function<bool(CurveEditor&)> act;
  std::int16_t interpolation;
  std::vector<double> heights;  // of points spread evenly
};

std::function<bool(CurveEditor&)> Count(int count) {
  return [count](CurveEditor& editor) { return editor.SetPointCount(count); };
}

std::function<bool(CurveEditor&)> Entry(int entry) {
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
  const CountCase cases[] = {
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
  for (const CountCase& row : cases) {
    SCOPED_TRACE(row.name);
    EditorBench bench(row.curve);
    EXPECT_TRUE(row.act(bench.editor));
    EXPECT_EQ(bench.editor.Curve().CorreInterp, row.interpolation);
    Points expected;
    const double last = static_cast<double>(row.heights.size()) - 1;
    for (const double y : row.heights) {
      expected.push_back({static_cast<double>(expected.size()) / last, y});
    }
    ExpectPoints(bench.editor.Curve(), expected);
  }
  EditorBench bench(Curve(kBSpline, kHill));
  EXPECT_TRUE(bench.editor.SetInterpolation(4));
  EXPECT_EQ(PointsOf(bench.editor.Curve()), kHill) << "the entry in force changes nothing";
}

TEST(CurveEditorCount, IsHeldToTheLimitsOfEachInterpolation) {
  const struct {
    int entry, fewest, text;
  } cases[] = {{0, 2, 189}, {1, 3, 190}, {2, 4, 191}, {3, 5, 192}, {4, 4, 217}};
  for (const auto& row : cases) {
    SCOPED_TRACE(row.entry);
    EditorBench bench(Line({{0, 0.75}, {1, 1}}));
    CurveEditor& editor = bench.editor;
    EXPECT_TRUE(editor.SetInterpolation(row.entry));
    EXPECT_EQ(editor.Curve().CorrePointNum, row.fewest);
    EXPECT_TRUE(editor.SetPointCount(100));
    EXPECT_EQ(editor.Curve().CorrePointNum, 16);
    EXPECT_TRUE(editor.SetPointCount(-3));
    EXPECT_EQ(editor.Curve().CorrePointNum, row.fewest);
    EXPECT_EQ(editor.InterpolationIndex(), row.entry);
    EXPECT_EQ(kInterpolationEntries[static_cast<std::size_t>(row.entry)].text, row.text);
  }
}

TEST(CurveEditorCount, ReleasesTheGrab) {
  EditorBench bench(Line(kFour));
  bench.editor.Press(150, 75);
  bench.editor.SetPointCount(2);
  EXPECT_FALSE(bench.editor.Dragging());
  EXPECT_EQ(bench.editor.SelectedPoint(), std::nullopt);
}

struct SymmetryCase {
  const char* name;
  CurveDefinition curve;
  Points expected;
};

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
  for (const SymmetryCase& row : cases) {
    SCOPED_TRACE(row.name);
    EditorBench bench(row.curve);
    EXPECT_TRUE(bench.editor.SetSymmetry(true));
    EXPECT_EQ(bench.editor.Curve().CorreSymmetry, 1);
    ExpectPoints(bench.editor.Curve(), row.expected);
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
  for (const SymmetryCase& row : cases) {
    SCOPED_TRACE(row.name);
    EditorBench bench(row.curve);
    EXPECT_TRUE(bench.editor.Normalize());
    ExpectPoints(bench.editor.Curve(), row.expected);
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
  const struct {
    CurveDefinition curve;
    std::function<bool(CurveEditor&)> act;
    std::string text;
  } cases[] = {
      {doubled, [](CurveEditor& editor) { return editor.Normalize(); }, "[3] Wrong value."},
      {sparse, Entry(0), "[3] Wrong value."},
      {Line(kFour), Entry(-1), "[2] Wrong value."},
  };
  for (const auto& row : cases) {
    EditorBench bench(row.curve);
    EXPECT_FALSE(row.act(bench.editor));
    EXPECT_EQ(bench.editor.Curve(), row.curve);
    EXPECT_FALSE(bench.editor.Changed());
    EXPECT_EQ(bench.display.Texts(), std::vector{row.text});
  }
  EditorBench bench(doubled);
  EXPECT_TRUE(bench.editor.Sampled().faulty);
  EXPECT_TRUE(bench.editor.Sampled().samples.empty());
  EXPECT_TRUE(bench.display.messages.empty()) << "drawing shows no message";
}

}  // namespace
}  // namespace warpline
