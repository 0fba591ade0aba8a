#pragma once

#include <algorithm>
#include <vector>

#include "core/correction.h"

// Curves and parameters from literals.

namespace warpline {

using Points = std::vector<CurvePoint>;

struct Flags {
  bool fixed = false, symmetric = false;
};

inline CurveDefinition Curve(std::int16_t interpolation, const Points& points, Flags flags = {}) {
  const auto count = static_cast<std::int16_t>(points.size());
  CurveDefinition curve{flags.fixed, flags.symmetric, count, interpolation, {}};
  std::copy(points.begin(), points.end(), curve.CorreDataPts.begin());
  return curve;
}

inline AxisParameters Parameters(int distortion, int optical, int position = 0, int amplitude = 0) {
  const auto narrow = [](int value) { return static_cast<std::int16_t>(value); };
  return {narrow(distortion), narrow(optical), 0, narrow(amplitude), position, 0};
}

}  // namespace warpline
