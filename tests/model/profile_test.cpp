#include "model/profile.h"

#include <gtest/gtest.h>

#include "tests/support/curves.h"
#include "tests/support/fault_of.h"

namespace warpline {
namespace {

TEST(LineSizeProfile, FollowsTheFormulaOfEachVariant) {
  const std::vector<double> curve = {0.75, 1.0, 0.9}, full = {0.0, 0.5, 1.0};
  const double first = (0.9 + 0.5) / 1.5 * 1000, last = (0.96 + 0.5) / 1.5 * 1000;
  const struct {
    const char* name;
    AxisParameters parameters;
    std::int16_t projection;
    std::vector<double> samples, expected;  // lines of length 1000
  } cases[] = {
      {"no distortion is the whole line", Parameters(0, 0), 0, curve, {1000, 1000, 1000}},
      {"amplitude scales", Parameters(0, -32, 0, 64), 0, curve, {1250, 1250, 1250}},
      {"optical centre at the edge", Parameters(40, -32), 0, curve, {900, 1000, 960}},
      {"optical centre in the middle", Parameters(40, 0), 0, curve, {800, 1000, 920}},
      {"optical centre beyond the edge", Parameters(40, -64), 0, curve, {first, 1000, last}},
      {"optical centre at the far edge", Parameters(40, 32), 0, curve, {1, 1, 1}},
      {"a sample beyond 1 there: 64 stands for the division",
       Parameters(100, 32),
       0,
       {1.02},
       {1300}},
      {"the curve turned over", Parameters(-40, -32), 0, curve, {1000, 900, 940}},
      {"reverse, from the other side", Parameters(40, 32), 1, curve, {900, 1000, 960}},
      {"reverse at the far edge", Parameters(40, -32), 1, curve, {1, 1, 1}},
      {"never below one pixel", Parameters(300, 0, 0, -127), 0, full, {1, 1, 503.90625}},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.name);
    const std::vector<double> profile =
        LineSizeProfile(row.parameters, row.projection, row.samples, 1000);
    ASSERT_EQ(profile.size(), row.expected.size());
    for (std::size_t i = 0; i < profile.size(); ++i) {
      EXPECT_NEAR(profile[i], row.expected[i], 1e-9) << "line " << i;
    }
  }
}

TEST(PreviewProfile, HasTwiceTheDepthAndNoOpticalCentre) {
  const std::vector<double> curve = {0.75, 1.0, 0.9};
  const std::vector<double> plain = PreviewProfile(Parameters(40, 16), curve, 800);
  const std::vector<double> turned = PreviewProfile(Parameters(-40, 16, 0, 128), curve, 800);
  const std::vector<double> expected = {640, 800, 736};
  const std::vector<double> expected_turned = {1200, 960, 1056};
  for (std::size_t i = 0; i < curve.size(); ++i) {
    EXPECT_NEAR(plain[i], expected[i], 1e-9);
    EXPECT_NEAR(turned[i], expected_turned[i], 1e-9);
  }
  const std::vector<double> deep = PreviewProfile(Parameters(300, 0), curve, 800);
  EXPECT_EQ(deep[0], 1.0);
}

TEST(SampleCurve, ReachesBothEndsExactly) {
  CurveDefinition triangle;
  ResetCurveDefinition(triangle, kTriangle);
  for (const int count : {2, 3, 768, 1024, kMaxLineCount}) {
    const std::vector<double> samples = SampleCurve(triangle, count);
    ASSERT_EQ(samples.size(), static_cast<std::size_t>(count));
    EXPECT_EQ(samples.front(), 0.75);
    EXPECT_EQ(samples.back(), 0.75);
    const double largest = *std::max_element(samples.begin(), samples.end());
    EXPECT_EQ(largest > 0.99, count > 2);
  }
}

TEST(SampleCurve, RefusesImpossibleLineCounts) {
  const auto fault_of = [](int line_count) {
    return FaultOf([=] { SampleCurve(CurveDefinition{}, line_count); });
  };
  EXPECT_EQ(fault_of(1), FaultCode::kNotANumber);
  for (const int count : {0, -5, 2050}) EXPECT_EQ(fault_of(count), FaultCode::kIndexOutOfRange);
}

}  // namespace
}  // namespace warpline
