#include "model/curve.h"

#include <gtest/gtest.h>

#include <functional>

#include "tests/support/curves.h"
#include "tests/support/fault_of.h"

namespace warpline {
namespace {

struct EvaluationCase {
  const char* name;
  CurveDefinition curve;
  Points expected;
};

std::vector<EvaluationCase> EvaluationCases() {
  const auto arch = Curve(kQuadratic, {{0, 0.8}, {0.5, 1}, {1, 0.8}});
  const auto triangle = Curve(kStraightLine, {{0, 0.75}, {0.5, 1}, {1, 0.75}});
  const auto doubled = Curve(kStraightLine, {{0, 0.8}, {0.5, 0.9}, {0.5, 1.0}, {1, 0.9}});
  const auto shorter = Curve(kStraightLine, {{0.25, 0.8}, {0.75, 0.9}});
  const Points slope = {{0, 0.75}, {0.25, 0.9}, {0.5, 1.0}, {0.75, 0.95}, {1, 0.78}};
  const Points cubic = {{0, 0.748142857142857},
                        {0.1, 0.81896},
                        {0.5, 0.988857142857143},
                        {0.9, 0.86984},
                        {1, 0.778142857142857}};
  const auto three = Curve(kBSpline, {{0, 0.8}, {0.5, 1}, {1, 0.8}});
  const auto five = Curve(kBSpline, {{0, 0.76}, {0.2, 0.9}, {0.5, 1.0}, {0.8, 0.93}, {1, 0.8}});
  const Points hill = {
      {0, 0.76},     {0.1, 0.826289637136321}, {0.35, 0.95}, {0.36, 0.953238888888898},
      {0.65, 0.965}, {0.9, 0.860783678563951}, {1, 0.8}};
  const auto four = Curve(kBSpline, {{0, 0.8}, {0.1, 1}, {0.7, 0.85}, {1, 0.9}});
  const Points arcs = {{0.8 / 9, 8.125 / 9}, {2.0 / 9, 8.5 / 9}, {0.4, 0.925},
                       {0.6, 8.0 / 9},       {0.8, 7.925 / 9},   {1, 0.9}};
  return {
      {"arch", arch, {{0, 0.8}, {0.25, 0.95}, {0.5, 1}, {0.9, 0.872}, {1, 0.8}}},
      {"triangle", triangle, {{0, 0.75}, {0.25, 0.875}, {0.5, 1}, {0.75, 0.875}, {1, 0.75}}},
      {"a straight line takes the earlier of two pairs", doubled, {{0.5, 0.9}, {0.75, 0.95}}},
      {"a straight line is 0 outside its points", shorter, {{0.2, 0}, {0.5, 0.85}, {0.8, 0}}},
      {"cubic approximation", Curve(kCubic, slope), cubic},
      {"quartic through five points", Curve(kQuartic, slope), {{0, 0.75}, {0.25, 0.9}, {1, 0.78}}},
      {"spline of three points is one arc", three, {{0, 0.8}, {0.5, 0.9}, {1, 0.8}}},
      {"spline of four points meets both arcs", four, arcs},
      {"spline of five points", five, hill},
      {"spline without a segment",
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

TEST(Curve, FaultsInsteadOfComputingNonsense) {
  CurveDefinition crowded;
  crowded.CorrePointNum = 17;
  constexpr auto kNotANumber = FaultCode::kNotANumber, kOutOfRange = FaultCode::kIndexOutOfRange;
  const struct {
    const char* name;
    CurveDefinition curve;
    FaultCode code;
  } cases[] = {
      {"few", Curve(kCubic, {{0, 0.8}, {0.5, 1}, {1, 0.8}}), kNotANumber},
      {"doubled x", Curve(kQuadratic, {{0, 0.8}, {0.5, 1}, {0.5, 0.9}, {0, 0.8}}), kNotANumber},
      {"upright", Curve(kBSpline, {{0, 0.8}, {0, 1}, {0, 0.9}, {1, 0.8}}), kNotANumber},
      {"seventeen points", crowded, kOutOfRange},
  };
  for (const auto& row : cases) {
    EXPECT_EQ(FaultOf([&] { PrepareCurve(row.curve); }), row.code) << row.name;
  }
  const auto upright = Curve(kStraightLine, {{0, 0.8}, {0, 0.9}, {1, 1}});
  EXPECT_EQ(FaultOf([&] { EvaluateCurve(PrepareCurve(upright), 0.0); }), kNotANumber);
  const std::vector<double> unit{0, 1}, large{0, 1e200};
  Coefficients c{};
  EXPECT_EQ(FaultOf([&] { FitPolynomial(unit, unit, 65, c); }), kOutOfRange);
  EXPECT_EQ(FaultOf([&] { FitPolynomial(large, unit, 1, c); }), kNotANumber);
}

}  // namespace
}  // namespace warpline
