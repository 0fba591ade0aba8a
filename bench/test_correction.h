#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "core/correction.h"

// The correction that the stages are measured with.

namespace warpline {

// A curve that each interpolation must work for: five points, none on a line with its neighbours.
inline CurveDefinition TestCurve(std::int16_t interpolation) {
  CurveDefinition curve;
  curve.CorreInterp = interpolation;
  curve.CorrePointNum = 5;
  constexpr std::array<double, 5> ys{0.80, 0.93, 1.00, 0.95, 0.82};
  for (std::size_t i = 0; i < ys.size(); ++i) {
    curve.CorreDataPts[i] = {static_cast<double>(i) / 4.0, ys[i]};
  }
  return curve;
}

inline CorrectionData TestCorrection(std::int16_t interpolation) {
  CorrectionData correction;
  correction.ScreenType = kOtherScreens;
  ResetToScreenType(correction);
  for (const Axis axis : {kHorizontal, kVertical}) {
    correction.Curves[axis] = TestCurve(interpolation);
    correction.Axes[axis].Distortion = 40;
    correction.Axes[axis].Optical = -40;  // beyond the centre: the panel extension is computed too
  }
  return correction;
}

}  // namespace warpline
