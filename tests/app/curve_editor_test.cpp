#include "app/curve_editor.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "tests/app/curve_editor_bench.h"
#include "tests/support/temp_folder.h"

namespace warpline {
namespace {

struct CountCase {
  std::string name;
  CurveDefinition curve;
  std::function<bool(CurveEditor&)> act;
  std::int16_t interpolation;
  Points expected;
};

std::function<bool(CurveEditor&)> Count(int count) {
  return [count](CurveEditor& editor) { return editor.SetPointCount(count); };
}

std::function<bool(CurveEditor&)> Entry(int entry) {
  return [entry](CurveEditor& editor) { return editor.SetInterpolation(entry); };
}

std::vector<CountCase> CountCases() {
  const Points arch = {{0, 0.8}, {0.5, 1}, {1, 0.8}};
  const auto diagonal = Curve(kStraightLine, {{0, 0.75}, {1, 1}});
  return {
      {"the points already moved count for those behind them",
       Curve(kQuadratic, arch),
       Count(4),
       kQuadratic,
       {{0, 0.79}, {1.0 / 3, 1}, {2.0 / 3, 0.7715}, {1, 0.75}}},
      {"new points of a line start at its foot",
       diagonal,
       Count(4),
       kStraightLine,
       {{0, 0.75}, {1.0 / 3, 1}, {2.0 / 3, 0.75}, {1, 0.75}}},
      {"fewer points keep the first heights",
       Curve(kStraightLine, kHill),
       Count(3),
       kStraightLine,
       {{0, 0.8}, {0.5, 1}, {1, 0.9}}},
      {"the left half counts",
       Curve(kStraightLine, {{0, 0.8}, {1, 1}}, {false, true}),
       Count(4),
       kStraightLine,
       {{0, 0.8}, {1.0 / 3, 1}, {2.0 / 3, 1}, {1, 0.8}}},
      {"the left half and the middle point count",
       Curve(kQuadratic, kHill, {false, true}),
       Count(5),
       kQuadratic,
       {{0, 0.825714285714},
        {0.25, 0.933755102041},
        {0.5, 0.93936909621},
        {0.75, 0.933755102041},
        {1, 0.825714285714}}},
      {"quartic of three points becomes five by the quadratic",
       Curve(kQuadratic, arch),
       Entry(3),
       kQuartic,
       {{0, 0.897142857143}, {0.25, 0.876408163265}, {0.5, 0.75}, {0.75, 0.75}, {1, 0.75}}},
      {"the former cubic places the points",
       Curve(kCubic, kHill),
       Entry(1),
       kQuadratic,
       {{0, 0.810714285714},
        {0.25, 0.957755102041},
        {0.5, 0.948883381924},
        {0.75, 0.934171095377},
        {1, 0.85305271732}}},
      {"a spline of the line's points",
       Curve(kStraightLine, kHill),
       Entry(4),
       kBSpline,
       {{0, 0.8}, {0.25, 1}, {0.5, 0.9}, {0.75, 0.95}, {1, 0.85}}},
      {"a spline with fewer points",
       Curve(kBSpline, kHill),
       Count(4),
       kBSpline,
       {{0, 0.8}, {1.0 / 3, 0.949090909091}, {2.0 / 3, 0.916815426997}, {1, 0.95}}},
      {"the entry in force changes nothing", Curve(kBSpline, arch), Entry(4), kBSpline, arch},
  };
}

TEST(CurveEditorCount, SpreadsThePointsAlongTheCurve) {
  for (const CountCase& row : CountCases()) {
    SCOPED_TRACE(row.name);
    EditorBench bench(row.curve);
    EXPECT_TRUE(row.act(bench.editor));
    EXPECT_EQ(bench.editor.Curve().CorreInterp, row.interpolation);
    ExpectPoints(bench.editor.Curve(), row.expected);
  }
}

TEST(CurveEditorCount, IsHeldToTheLimitsOfEachInterpolation) {
  const struct {
    int entry;
    int fewest;
    int text;
  } cases[] = {{0, 2, 189}, {1, 3, 190}, {2, 4, 191}, {3, 5, 192}, {4, 4, 217}};
  for (const auto& row : cases) {
    SCOPED_TRACE(row.entry);
    EditorBench bench(Curve(kStraightLine, {{0, 0.75}, {1, 1}}));
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
  EditorBench bench(Curve(kStraightLine, kFour));
  bench.editor.Press(150, 75);
  bench.editor.SetPointCount(2);
  EXPECT_FALSE(bench.editor.Dragging());
  EXPECT_EQ(bench.editor.SelectedPoint(), std::nullopt);
}

struct SymmetryCase {
  std::string name;
  CurveDefinition curve;
  Points expected;
};

TEST(CurveEditorSymmetry, TheLeftHalfCountsAtOnce) {
  const SymmetryCase cases[] = {
      {"even",
       Curve(kStraightLine, {{0, 0.8}, {0.2, 0.9}, {0.7, 1}, {1, 0.75}}),
       {{0, 0.8}, {0.2, 0.9}, {0.8, 0.9}, {1, 0.8}}},
      {"odd",
       Curve(kStraightLine, {{0, 0.8}, {0.2, 0.9}, {0.6, 1}, {0.9, 0.85}, {1, 0.75}}),
       {{0, 0.8}, {0.2, 0.9}, {0.5, 1}, {0.8, 0.9}, {1, 0.8}}},
      {"two points", Curve(kStraightLine, {{0, 0.75}, {1, 1}}), {{0, 0.75}, {1, 0.75}}},
      {"close to the centre",
       Curve(kStraightLine, {{0, 0.8}, {0.49, 0.9}, {0.7, 1}, {1, 0.75}}),
       {{0, 0.8}, {0.49, 0.9}, {0.51, 0.9}, {1, 0.8}}},
      {"even, beyond the centre",
       Curve(kStraightLine, {{0, 0.8}, {0.6, 0.9}, {0.7, 1}, {1, 0.75}}),
       {{0, 0.8}, {0.47, 0.9}, {0.53, 0.9}, {1, 0.8}}},
      {"odd, beyond the centre",
       Curve(kQuartic, {{0, 0.8}, {0.5, 0.9}, {0.7, 1}, {0.9, 0.85}, {1, 0.75}}),
       {{0, 0.8}, {0.44, 0.9}, {0.5, 1}, {0.56, 0.9}, {1, 0.8}}},
      {"two points beyond the centre",
       Curve(kStraightLine, {{0, 0.8}, {0.6, 0.9}, {0.7, 1}, {0.8, 0.9}, {0.9, 0.85}, {1, 0.75}}),
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

  const auto binary = Curve(kStraightLine, {{0, 0.8}, {0.125, 1}, {0.75, 0.9}, {1, 0.85}});
  EditorBench exact(binary);
  exact.editor.Reverse();
  exact.editor.Reverse();
  EXPECT_EQ(exact.editor.Curve(), binary);
}

TEST(CurveEditorNormalize, ScalesOnlyALargeSpreadAndLiftsTheTop) {
  const SymmetryCase cases[] = {
      {"spread of 0.5",
       Curve(kStraightLine, {{0, 0.5}, {0.5, 1}, {1, 0.7}}),
       {{0, 0.75}, {0.5, 1}, {1, 0.85}}},
      {"spread of 0.1",
       Curve(kStraightLine, {{0, 0.8}, {0.5, 0.9}, {1, 0.85}}),
       {{0, 0.9}, {0.5, 1}, {1, 0.95}}},
      {"spread of 0.25", Curve(kStraightLine, {{0, 0.75}, {1, 1}}), {{0, 0.75}, {1, 1}}},
      {"points take the height at the nearest sample",
       Curve(kStraightLine, {{0, 0.8}, {0.2509, 0.82509}, {1, 0.9}}),
       {{0, 0.9}, {0.2509, 0.925}, {1, 1}}},
      {"points come down onto their spline",  // its top is at X = 0.5
       Curve(kBSpline, {{0, 0.8}, {0.5, 1}, {1, 0.8}}),
       {{0, 0.9}, {0.5, 1}, {1, 0.9}}},
      {"a spline without a segment", Curve(kBSpline, {{0, 0.8}, {1, 0.9}}), {{0, 1}, {1, 1}}},
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
  EXPECT_EQ(bench.editor.Curve(), Curve(kStraightLine, {{0, 0.75}, {1, 1}}, {true, false}));
}

TEST(CurveEditorApply, IsTheOnlyWayIntoTheLiveCurve) {
  const auto curve = Curve(kStraightLine, kFour);
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
            Curve(kStraightLine, {{0, 0.8}, {0.3, 0.95}, {0.7, 0.9}, {1, 0.8}}, {true, false}));
  bench.editor.SetFixed(true);
  EXPECT_FALSE(bench.editor.Changed());
}

TEST(CurveEditorFiles, WhatIsExportedComesBackByImport) {
  const TempFolder folder;
  const auto curve = Curve(kBSpline, kHill, {true, true});
  EditorBench bench(curve);
  ASSERT_TRUE(bench.editor.Export(folder / "hill.wls"));
  EXPECT_FALSE(bench.editor.Changed());
  bench.editor.Seed(kTriangle);
  bench.editor.Press(250, 25);
  ASSERT_TRUE(bench.editor.Import(folder / "hill.wls"));
  EXPECT_EQ(bench.editor.Curve(), curve);
  EXPECT_FALSE(bench.editor.Dragging());
  EXPECT_TRUE(bench.editor.Changed());
  EXPECT_TRUE(bench.display.messages.empty());
}

TEST(CurveEditorFiles, AnImportArrivesAsItIs) {
  const TempFolder folder;
  // Two points are too few for a spline chosen by hand, and the curve is not symmetric.
  const auto path = folder.Write("two.wls",
                                 "[Warpline Shape File]\nCorreFixed=0\nCorreSymmetry=1\n"
                                 "CorrePointNum=2\nCorreInterp=5\n"
                                 "CorreDataPtsX0=0\nCorreDataPtsY0=800000\n"
                                 "CorreDataPtsX1=1000000\nCorreDataPtsY1=900000\n");
  EditorBench bench(Curve(kStraightLine, kFour));
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
  const TempFolder folder;
  const std::string head = "[Warpline Shape File 2.0]\nCorrePointNum=2\n";
  const struct {
    std::string name;
    std::filesystem::path path;
    std::string text;
  } cases[] = {
      {"no header", folder.Write("a.wls", "CorreInterp=5\n"), "The file format is corrupted."},
      {"a value out of range", folder.Write("b.wls", head + "CorreInterp=6\n"),
       "The parameter value is not correct."},
      {"a last point before the end",
       folder.Write("c.wls", head + "CorreDataPtsX01=900000\nCorreDataPtsY00=900000\n"),
       "The parameter value is not correct."},
      {"digits that do not fit", folder.Write("d.wls", head + "CorreDataPtsX00=99999999999\n"),
       "[1] Wrong value."},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.name);
    const auto curve = Curve(kStraightLine, kFour, {true, false});
    EditorBench bench(curve);
    bench.editor.Press(150, 75);
    EXPECT_FALSE(bench.editor.Import(row.path));
    EXPECT_EQ(bench.editor.Curve(), curve);
    EXPECT_EQ(bench.editor.SelectedPoint(), 1);
    EXPECT_FALSE(bench.editor.Changed());
    EXPECT_EQ(bench.display.Texts(), std::vector{row.text});
  }
  EditorBench bench(Curve(kStraightLine, kFour));
  EXPECT_FALSE(bench.editor.Import(folder / "missing.wls"));
  EXPECT_FALSE(bench.editor.Export(folder / "missing" / "out.wls"));
  EXPECT_EQ(bench.display.messages.size(), 2u);
}

TEST(CurveEditorFaults, AreReportedAndLeaveTheRecord) {
  // Such curves come from files: two equal X values, and a quartic of three points.
  const auto doubled = Curve(kQuadratic, {{0, 0.8}, {0, 0.9}, {1, 0.8}});
  const auto sparse = Curve(kQuartic, {{0, 0.8}, {0.5, 1}, {1, 0.8}});
  const struct {
    std::string name;
    CurveDefinition curve;
    std::function<bool(CurveEditor&)> act;
    std::string text;
  } cases[] = {
      {"normalize", doubled, [](CurveEditor& editor) { return editor.Normalize(); },
       "[3] Wrong value."},
      {"interpolation by the former type", sparse, Entry(0), "[3] Wrong value."},
      {"no such interpolation", Curve(kStraightLine, kFour), Entry(-1), "[2] Wrong value."},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.name);
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

TEST(CurveEditorDrawing, SamplesTheCurveAtBothEndsAndBetween) {
  EditorBench bench(Curve(kQuadratic, {{0, 0.8}, {0.5, 1}, {1, 0.8}}));
  const SampledCurve sampled = bench.editor.Sampled();
  ASSERT_EQ(sampled.samples.size(), 501u);
  EXPECT_NEAR(sampled.samples[0], 0.8, 1e-12);
  EXPECT_NEAR(sampled.samples[125], 0.95, 1e-12);
  EXPECT_NEAR(sampled.samples[500], 0.8, 1e-12);
  EXPECT_EQ(bench.editor.GraphPositions(),
            (std::vector<GraphPosition>{{0, 125}, {250, 25}, {500, 125}}));
}

}  // namespace
}  // namespace warpline
