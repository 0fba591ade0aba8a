#include "model/curve.h"

#include <gtest/gtest.h>

#include <functional>
#include <initializer_list>
#include <string>
#include <vector>

#include "core/fault.h"

namespace warpline {
namespace {

CurveDefinition Curve(std::int16_t interpolation, std::initializer_list<CurvePoint> points) {
  CurveDefinition curve;
  curve.CorreInterp = interpolation;
  curve.CorrePointNum = static_cast<std::int16_t>(points.size());
  std::copy(points.begin(), points.end(), curve.CorreDataPts.begin());
  return curve;
}

struct EvaluationCase {
  std::string name;
  CurveDefinition curve;
  std::vector<CurvePoint> expected;
};

std::vector<EvaluationCase> EvaluationCases() {
  const std::initializer_list<CurvePoint> hill = {
      {0, 0.76}, {0.2, 0.9}, {0.5, 1.0}, {0.8, 0.93}, {1, 0.8}};
  const std::initializer_list<CurvePoint> slope = {
      {0, 0.75}, {0.25, 0.9}, {0.5, 1.0}, {0.75, 0.95}, {1, 0.78}};
  return {
      {"arch is the parabola through its points",
       Curve(kQuadratic, {{0, 0.8}, {0.5, 1}, {1, 0.8}}),
       {{0, 0.8}, {0.25, 0.95}, {0.5, 1}, {0.9, 0.872}, {1, 0.8}}},
      {"triangle meets its corners",
       Curve(kStraightLine, {{0, 0.75}, {0.5, 1}, {1, 0.75}}),
       {{0, 0.75}, {0.25, 0.875}, {0.5, 1}, {0.75, 0.875}, {1, 0.75}}},
      {"a straight line takes the earlier of two pairs",
       Curve(kStraightLine, {{0, 0.8}, {0.5, 0.9}, {0.5, 1.0}, {1, 0.9}}),
       {{0.5, 0.9}, {0.75, 0.95}}},
      {"a straight line is 0 outside its points",
       Curve(kStraightLine, {{0.25, 0.8}, {0.75, 0.9}}),
       {{0.2, 0}, {0.5, 0.85}, {0.8, 0}}},
      {"cubic approximation",
       Curve(kCubic, slope),
       {{0, 0.748142857142857},
        {0.1, 0.81896},
        {0.5, 0.988857142857143},
        {0.9, 0.86984},
        {1, 0.778142857142857}}},
      {"quartic through five points", Curve(kQuartic, slope), {{0, 0.75}, {0.25, 0.9}, {1, 0.78}}},
      {"spline of three points is one arc",
       Curve(kBSpline, {{0, 0.8}, {0.5, 1}, {1, 0.8}}),
       {{0, 0.8}, {0.5, 0.9}, {1, 0.8}}},
      {"spline of five points",
       Curve(kBSpline, hill),
       {{0, 0.76},
        {0.1, 0.826289637136321},
        {0.35, 0.95},
        {0.36, 0.953238888888898},
        {0.65, 0.965},
        {0.9, 0.860783678563951},
        {1, 0.8}}},
      {"spline of two points has no segment",
       Curve(kBSpline, {{0, 0.8}, {1, 0.9}}),
       {{0, 0}, {0.5, 0}, {1, 0}}},
  };
}

TEST(EvaluateCurve, FollowsEveryMethod) {
  for (const EvaluationCase& row : EvaluationCases()) {
    SCOPED_TRACE(row.name);
    const PreparedCurve prepared = PrepareCurve(row.curve);
    for (const CurvePoint& point : row.expected) {
      EXPECT_NEAR(EvaluateCurve(prepared, point.X), point.Y, 1e-12) << "x = " << point.X;
    }
  }
}

TEST(PrepareCurve, ASegmentMeetsItsArcAtTheFourSamples) {
  const PreparedCurve curve =
      PrepareCurve(Curve(kBSpline, {{0, 0.8}, {0.1, 1}, {0.7, 0.85}, {1, 0.9}}));
  EXPECT_DOUBLE_EQ(curve.segments[0].E.X, 0.4);
  EXPECT_DOUBLE_EQ(curve.segments[1].S.Y, 0.925);
  for (const std::size_t segment : {0, 1}) {
    for (const CurvePoint& sample : curve.segments[segment].samples) {
      EXPECT_NEAR(EvaluateCurve(curve, sample.X), sample.Y, 1e-11);
    }
  }
}

struct FaultCase {
  std::string name;
  std::function<void()> act;
  FaultCode code;
};

TEST(Curve, FaultsInsteadOfComputingNonsense) {
  const auto prepare = [](CurveDefinition curve) { return [curve] { PrepareCurve(curve); }; };
  CurveDefinition crowded;
  crowded.CorrePointNum = 17;
  const std::vector<FaultCase> cases = {
      {"cubic of three points", prepare(Curve(kCubic, {{0, 0.8}, {0.5, 1}, {1, 0.8}})),
       FaultCode::kNotANumber},
      {"quadratic with a doubled x",
       prepare(Curve(kQuadratic, {{0, 0.8}, {0.5, 1}, {0.5, 0.9}, {0, 0.8}})),
       FaultCode::kNotANumber},
      {"spline with a vertical segment",
       prepare(Curve(kBSpline, {{0, 0.8}, {0, 1}, {0, 0.9}, {1, 0.8}})), FaultCode::kNotANumber},
      {"seventeen points", prepare(crowded), FaultCode::kIndexOutOfRange},
      {"vertical first straight line",
       [] {
         EvaluateCurve(PrepareCurve(Curve(kStraightLine, {{0, 0.8}, {0, 0.9}, {1, 1}})), 0.0);
       },
       FaultCode::kNotANumber},
      {"degree above 64",
       [] {
         Coefficients c{};
         const std::vector<double> values = {0, 1};
         FitPolynomial(values, values, 65, c);
       },
       FaultCode::kIndexOutOfRange},
      {"values beyond a double",
       [] {
         Coefficients c{};
         FitPolynomial(std::vector<double>{0, 1e200}, std::vector<double>{0, 1}, 1, c);
       },
       FaultCode::kNotANumber},
  };
  for (const FaultCase& row : cases) {
    SCOPED_TRACE(row.name);
    try {
      row.act();
      ADD_FAILURE() << "no fault";
    } catch (const Fault& fault) {
      EXPECT_EQ(fault.code(), row.code);
    }
  }
}

}  // namespace
}  // namespace warpline
