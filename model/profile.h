#pragma once

#include <span>
#include <vector>

#include "core/correction.h"
#include "core/register_set.h"

// One value per panel line that crosses an axis, index 0..n-1, all in double precision, computed
// anew at each call.

namespace warpline {

inline constexpr int kMaxLineCount = 2049;

// Everything that one axis's profile depends on.
struct AxisCorrection {
  AxisParameters Parameters;
  std::int16_t Projection = 0;
  CurveDefinition Curve;
};

AxisCorrection CorrectionOf(const CorrectionData& correction, Axis axis);

// The curve at x = i / (n - 1), i = 0..n-1. Throws Fault: kNotANumber for n = 1, kIndexOutOfRange
// for n outside 1..2049, and what PrepareCurve and EvaluateCurve throw.
std::vector<double> SampleCurve(const CurveDefinition& curve, int line_count);

// The size in pixels that each line of length L (pixels) must be drawn at; never below 1.0. The
// projection flag chooses c = (Optical + 32) / 64 or c = (32 - Optical) / 64 as the optical centre.
// Throws Fault(kNotANumber) for a size that is not finite.
std::vector<double> LineSizeProfile(const AxisParameters& parameters, std::int16_t projection_flag,
                                    std::span<const double> samples, int line_length);

// A like profile without the optical centre, with twice the depth, for drawing.
std::vector<double> PreviewProfile(const AxisParameters& parameters,
                                   std::span<const double> samples, int line_length);

}  // namespace warpline
