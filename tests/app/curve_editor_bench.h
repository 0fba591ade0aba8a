#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "app/curve_editor.h"
#include "tests/support/recorder.h"

// What the tests of the curve editor share: curves from literals, and an editor with all that it
// needs.

namespace warpline {

using Points = std::vector<CurvePoint>;

struct Flags {
  bool fixed = false;
  bool symmetric = false;
};

inline CurveDefinition Curve(std::int16_t interpolation, const Points& points, Flags flags = {}) {
  CurveDefinition curve;
  curve.CorreFixed = flags.fixed ? 1 : 0;
  curve.CorreSymmetry = flags.symmetric ? 1 : 0;
  curve.CorreInterp = interpolation;
  curve.CorrePointNum = static_cast<std::int16_t>(points.size());
  std::copy(points.begin(), points.end(), curve.CorreDataPts.begin());
  return curve;
}

inline Points PointsOf(const CurveDefinition& curve) {
  return {curve.CorreDataPts.begin(), curve.CorreDataPts.begin() + curve.CorrePointNum};
}

inline void ExpectPoints(const CurveDefinition& curve, const Points& expected) {
  const Points points = PointsOf(curve);
  ASSERT_EQ(points.size(), expected.size());
  for (std::size_t i = 0; i < points.size(); ++i) {
    EXPECT_NEAR(points[i].X, expected[i].X, 1e-10) << "X of point " << i;
    EXPECT_NEAR(points[i].Y, expected[i].Y, 1e-10) << "Y of point " << i;
  }
}

// An editor of the vertical curve, with everything that it needs.
struct EditorBench {
  explicit EditorBench(const CurveDefinition& curve)
      : global(WithCurve(curve)), editor(global, kVertical, files, messages) {}

  static LSSglobal WithCurve(const CurveDefinition& curve) {
    LSSglobal global;
    ResetModel(global);
    global.Correction.Curves[kVertical] = curve;
    return global;
  }

  LSSglobal global;
  RecordingDisplay display;
  Messages messages{global, display};
  LSSfile files{global, messages};
  CurveEditor editor;
};

inline const Points kFour = {{0, 0.8}, {0.3, 0.9}, {0.7, 0.9}, {1, 0.8}};
inline const Points kHill = {{0, 0.8}, {0.3, 1}, {0.6, 0.9}, {0.7, 0.95}, {1, 0.85}};

}  // namespace warpline
