#pragma once

#include <gtest/gtest.h>

#include "app/curve_editor.h"
#include "tests/support/curves.h"
#include "tests/support/engine_rig.h"

// What the tests of the curve editor share: curves from literals, and an editor with all that it
// needs.

namespace warpline {

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
struct EditorBench : EngineRig {
  explicit EditorBench(const CurveDefinition& curve)
      : editor((global.Correction.Curves[kVertical] = curve, global), kVertical, files, messages) {}

  CurveEditor editor;
};

inline const Points kFour = {{0, 0.8}, {0.3, 0.9}, {0.7, 0.9}, {1, 0.8}};
inline const Points kHill = {{0, 0.8}, {0.3, 1}, {0.6, 0.9}, {0.7, 0.95}, {1, 0.85}};

inline CurveDefinition Line(const Points& points, Flags flags = {}) {
  return Curve(kStraightLine, points, flags);
}

}  // namespace warpline
