#pragma once

#include <array>
#include <cstddef>
#include <span>

#include "core/correction.h"

// The function y(x) on 0..1 that the control points of a curve definition describe.

namespace warpline {

inline constexpr int kMaxDegree = 64;
using Coefficients = std::array<double, kMaxDegree + 1>;

// One quadratic Bezier arc of a B-spline, kept as the cubic in x that meets it at t = 0, 1/3, 2/3
// and 1.
struct SplineSegment {
  CurvePoint S;               // start
  CurvePoint E;               // end
  std::array<double, 4> k{};  // y = k0 + k1 x + k2 x^2 + k3 x^3
};

// A curve definition made ready for evaluation.
struct PreparedCurve {
  int interpolation = kStraightLine;
  int point_count = 0;
  std::array<CurvePoint, kMaxCurvePoints> points{};
  Coefficients c{};
  std::array<SplineSegment, kMaxCurvePoints> segments{};
};

// Throws Fault: kIndexOutOfRange for a point count outside 0..16 or a degree above 64, kNotANumber
// for a singular fit.
PreparedCurve PrepareCurve(const CurveDefinition& definition);

// y at x. Straight lines and B-splines give 0 where no pair of points or no segment encloses x;
// where two enclose it, the earlier one counts. Throws Fault(kNotANumber) for a straight line
// between two points of the same x.
double EvaluateCurve(const PreparedCurve& curve, double x);

// Ordinary least squares through the normal equations: y = sum of c[k] x^k, k = 0..degree. The
// spans hold point_count (at most 16) values each. Throws Fault: kIndexOutOfRange for too many
// points or a degree outside 0..64, kNotANumber when there are fewer than degree + 1 different x or
// a coefficient is not finite.
void FitPolynomial(std::span<const double> x, std::span<const double> y, int degree,
                   Coefficients& c);

}  // namespace warpline
