#include "model/profile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "core/fault.h"

namespace warpline {
namespace {

AxisParameters Parameters(int distortion, int optical, int amplitude = 0) {
  AxisParameters parameters;
  parameters.Distortion = static_cast<std::int16_t>(distortion);
  parameters.Optical = static_cast<std::int16_t>(optical);
  parameters.Amplitude = static_cast<std::int16_t>(amplitude);
  return parameters;
}

struct ProfileCase {
  std::string name;
  AxisParameters parameters;
  std::int16_t projection;
  std::vector<double> samples;
  std::vector<double> expected;  // lines of length 1000
};

TEST(LineSizeProfile, FollowsTheFormulaOfEachVariant) {
  const std::vector<double> curve = {0.75, 1.0, 0.9};
  const ProfileCase cases[] = {
      {"no distortion is the whole line", Parameters(0, 0), 0, curve, {1000, 1000, 1000}},
      {"amplitude scales", Parameters(0, -32, 64), 0, curve, {1250, 1250, 1250}},
      {"optical centre at the edge", Parameters(40, -32), 0, curve, {900, 1000, 960}},
      {"optical centre in the middle", Parameters(40, 0), 0, curve, {800, 1000, 920}},
      {"optical centre beyond the edge",
       Parameters(40, -64),
       0,
       curve,
       {(0.9 + 0.5) / 1.5 * 1000, 1000, (0.96 + 0.5) / 1.5 * 1000}},
      {"optical centre at the far edge", Parameters(40, 32), 0, curve, {1, 1, 1}},
      {"negative distortion turns the curve over",
       Parameters(-40, -32),
       0,
       curve,
       {1000, 900, 940}},
      {"reverse takes the centre from the other side",
       Parameters(40, 32),
       1,
       curve,
       {900, 1000, 960}},
      {"reverse at the far edge", Parameters(40, -32), 1, curve, {1, 1, 1}},
      {"never below one pixel", Parameters(300, 0, -127), 0, {0.0, 0.5, 1.0}, {1, 1, 503.90625}},
  };
  for (const ProfileCase& row : cases) {
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
  const std::vector<double> turned = PreviewProfile(Parameters(-40, 16, 128), curve, 800);
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
  const auto code_for = [](int line_count) {
    try {
      SampleCurve(CurveDefinition{}, line_count);
    } catch (const Fault& fault) {
      return static_cast<int>(fault.code());
    }
    return 0;
  };
  EXPECT_EQ(code_for(1), 3);
  EXPECT_EQ(code_for(0), 2);
  EXPECT_EQ(code_for(-5), 2);
  EXPECT_EQ(code_for(2050), 2);
}

}  // namespace
}  // namespace warpline
