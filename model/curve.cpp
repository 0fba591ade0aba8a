#include "model/curve.h"

#include <algorithm>
#include <vector>

#include "core/fault.h"

namespace warpline {
namespace {

using Matrix = std::array<std::array<double, kMaxDegree + 1>, kMaxDegree + 1>;

// B(t) of the quadratic Bezier arc, one coordinate.
double BezierAt(double start, double middle, double end, double t) {
  return (1 - t) * (1 - t) * start + 2 * t * (1 - t) * middle + t * t * end;
}

int DistinctValues(std::span<const double> values) {
  std::array<double, kMaxCurvePoints> sorted{};
  const auto end = std::copy(values.begin(), values.end(), sorted.begin());
  std::sort(sorted.begin(), end);
  return static_cast<int>(std::unique(sorted.begin(), end) - sorted.begin());
}

// Sums of x^q and of y x^r over all points, powers by repeated multiplication.
void FillNormalEquations(std::span<const double> x, std::span<const double> y, std::size_t rows,
                         Matrix& a, Coefficients& t) {
  std::array<double, 2 * kMaxDegree + 1> s{};
  std::fill_n(t.begin(), rows, 0.0);
  for (std::size_t i = 0; i < x.size(); ++i) {
    double power = 1.0;
    for (std::size_t q = 0; q < 2 * rows - 1; ++q) {
      s[q] += power;
      if (q < rows) t[q] += y[i] * power;
      power *= x[i];
    }
  }
  for (std::size_t r = 0; r < rows; ++r) {
    for (std::size_t column = 0; column < rows; ++column) a[r][column] = s[r + column];
  }
}

// Gauss-Jordan in row order, without a pivot search; the right-hand column becomes the solution.
void Eliminate(std::size_t rows, Matrix& a, Coefficients& t) {
  for (std::size_t r = 0; r < rows; ++r) {
    const double diagonal = a[r][r];
    for (std::size_t column = 0; column < rows; ++column) a[r][column] /= diagonal;
    t[r] /= diagonal;
    for (std::size_t other = 0; other < rows; ++other) {
      if (other == r) continue;
      const double factor = a[other][r];
      for (std::size_t column = 0; column < rows; ++column) {
        a[other][column] -= factor * a[r][column];
      }
      t[other] -= factor * t[r];
    }
  }
}

SplineSegment MakeSegment(CurvePoint start, CurvePoint middle, CurvePoint end) {
  SplineSegment segment{start, end, {}};
  std::array<double, 4> x{};
  std::array<double, 4> y{};
  for (std::size_t i = 0; i < 4; ++i) {
    const double t = static_cast<double>(i) / 3;
    x[i] = BezierAt(start.X, middle.X, end.X, t);
    y[i] = BezierAt(start.Y, middle.Y, end.Y, t);
  }
  Coefficients c{};
  FitPolynomial(x, y, kCubic, c);
  std::copy_n(c.begin(), 4, segment.k.begin());
  return segment;
}

void BuildSegments(PreparedCurve& curve) {
  CurvePoint start = curve.points[0];
  for (int j = 0; j + 2 < curve.point_count; ++j) {
    const auto index = static_cast<std::size_t>(j);
    const CurvePoint middle = curve.points[index + 1];
    CurvePoint end = curve.points[index + 2];
    const bool last = j + 3 == curve.point_count;
    if (!last) end = {(middle.X + end.X) / 2, (middle.Y + end.Y) / 2};
    curve.segments[index] = MakeSegment(start, middle, end);
    start = end;
  }
}

double EvaluateStraightLine(const PreparedCurve& curve, double x) {
  for (int k = 0; k + 1 < curve.point_count; ++k) {
    const CurvePoint& left = curve.points[static_cast<std::size_t>(k)];
    const CurvePoint& right = curve.points[static_cast<std::size_t>(k) + 1];
    if (left.X <= x && x <= right.X) {
      const double slope = RequireFinite((right.Y - left.Y) / (right.X - left.X));
      return slope * x + (left.Y - slope * left.X);
    }
  }
  return 0.0;
}

double EvaluatePolynomial(std::span<const double> c, double x) {
  double y = 0.0;
  double power = 1.0;
  for (const double coefficient : c) {
    y += coefficient * power;
    power *= x;
  }
  return y;
}

double EvaluateSpline(const PreparedCurve& curve, double x) {
  for (int j = 0; j + 2 < curve.point_count; ++j) {
    const SplineSegment& segment = curve.segments[static_cast<std::size_t>(j)];
    if (segment.S.X <= x && x <= segment.E.X) return EvaluatePolynomial(segment.k, x);
  }
  return 0.0;
}

}  // namespace

PreparedCurve PrepareCurve(const CurveDefinition& definition) {
  if (definition.CorrePointNum < 0 || definition.CorrePointNum > kMaxCurvePoints) {
    throw Fault(FaultCode::kIndexOutOfRange);
  }
  PreparedCurve curve;
  curve.interpolation = definition.CorreInterp;
  curve.point_count = definition.CorrePointNum;
  curve.points = definition.CorreDataPts;
  if (curve.interpolation == kStraightLine) return curve;
  if (curve.interpolation == kBSpline) {
    BuildSegments(curve);
    return curve;
  }
  std::array<double, kMaxCurvePoints> x{};
  std::array<double, kMaxCurvePoints> y{};
  const auto count = static_cast<std::size_t>(curve.point_count);
  for (std::size_t i = 0; i < count; ++i) {
    x[i] = curve.points[i].X;
    y[i] = curve.points[i].Y;
  }
  FitPolynomial(std::span(x).first(count), std::span(y).first(count), curve.interpolation, curve.c);
  return curve;
}

double EvaluateCurve(const PreparedCurve& curve, double x) {
  if (curve.interpolation == kStraightLine) return EvaluateStraightLine(curve, x);
  if (curve.interpolation == kBSpline) return EvaluateSpline(curve, x);
  return EvaluatePolynomial(
      std::span(curve.c).first(static_cast<std::size_t>(curve.interpolation) + 1), x);
}

void FitPolynomial(std::span<const double> x, std::span<const double> y, int degree,
                   Coefficients& c) {
  if (degree < 0 || degree > kMaxDegree || x.size() > kMaxCurvePoints || x.size() != y.size()) {
    throw Fault(FaultCode::kIndexOutOfRange);
  }
  if (DistinctValues(x) < degree + 1) throw Fault(FaultCode::kNotANumber);
  const std::size_t rows = static_cast<std::size_t>(degree) + 1;
  Matrix a;  // only rows x rows are used
  FillNormalEquations(x, y, rows, a, c);
  Eliminate(rows, a, c);
  std::for_each(c.begin(), c.begin() + static_cast<std::ptrdiff_t>(rows), RequireFinite);
}

}  // namespace warpline
