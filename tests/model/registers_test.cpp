#include "model/registers.h"

#include <gtest/gtest.h>

#include <numeric>

#include "model/curve.h"
#include "model/profile.h"
#include "tests/support/curves.h"
#include "tests/support/fault_of.h"

namespace warpline {
namespace {

AxisCorrection Correction(const CurveDefinition& curve, int distortion, int optical,
                          int amplitude = 0, std::int16_t projection = 0) {
  AxisCorrection axis;
  axis.Curve = curve;
  axis.Parameters = Parameters(distortion, optical, 0, amplitude);
  axis.Projection = projection;
  return axis;
}

const CurveDefinition kArchCurve = Curve(kQuadratic, {{0, 0.8}, {0.5, 1}, {1, 0.8}});
const CurveDefinition kTriangleCurve = Curve(kStraightLine, {{0, 0.75}, {0.5, 1}, {1, 0.75}});
const CurveDefinition kSplineCurve =
    Curve(kBSpline, {{0, 0.76}, {0.2, 0.9}, {0.5, 1}, {0.8, 0.93}, {1, 0.8}});
const CurveDefinition kQuarticCurve =
    Curve(kQuartic, {{0, 0.75}, {0.25, 0.9}, {0.5, 1}, {0.75, 0.95}, {1, 0.78}});

struct GoldenCase {
  std::string name;
  AxisCorrection axis;
  int length, count;
  const char *panel_ext, *corre_0, *corre_1, *corre_2_begin, *corre_2_end;
  std::int64_t scale_sum;  // of the unclamped scales
};

std::vector<GoldenCase> GoldenCases() {
  return {
      {"arch", Correction(kArchCurve, 20, -32), 1024, 768, "0000", "5585", "F9",
       "F0011FF0010000F001100F00", "0F0000100FF1100F", 25510572},
      {"reversed, mirrored, centre outside", Correction(kArchCurve, -35, 40, 0, 1), 1024, 768,
       "0001", "0080", "0B", "1F1F1F1F1F0FF1100F100F00", "011FF0F1F1F1F1F1", 26263220},
      {"triangle with amplitude", Correction(kTriangleCurve, 60, -10, 12), 768, 1024, "0000",
       "7F9E", "E9", "1F1FF0011F00001F0000F100", "F10000F1100FF1F1", 36395636},
      {"spline", Correction(kSplineCurve, 30, 8, -20), 1920, 1200, "0000", "D7AB", "E7",
       "00F001100F00F1F1F1F10100", "F10000F1F110F0F1", 46206483},
      {"quartic, centre outside", Correction(kQuarticCurve, 45, -50), 800, 600, "5C03", "528C",
       "F6", "F0010F100F1F001F0FF10000", "1F0000001F000000", 20319601},
      {"too coarse for four bits", Correction(kArchCurve, 10, -32), 64, 16, "0000", "9D82", "57",
       "77777777777777", "77777777777777", 528304},
  };
}

TEST(BuildAxisRegisters, MatchesTheGoldenTexts) {
  for (const GoldenCase& row : GoldenCases()) {
    SCOPED_TRACE(row.name);
    const AxisRegisters registers = BuildAxisRegisters(row.axis, row.length, row.count);
    EXPECT_EQ(registers[kPanelExt], row.panel_ext);
    EXPECT_EQ(registers[kCorre0], row.corre_0);
    EXPECT_EQ(registers[kCorre1], row.corre_1);
    const std::string& table = registers[kCorre2];
    EXPECT_EQ(table.size(), static_cast<std::size_t>(row.count - 2));
    EXPECT_TRUE(table.starts_with(row.corre_2_begin)) << table;
    EXPECT_TRUE(table.ends_with(row.corre_2_end)) << table;
    const std::vector<double> samples = SampleCurve(row.axis.Curve, row.count);
    const std::vector<std::int32_t> scales = LineScales(
        LineSizeProfile(row.axis.Parameters, row.axis.Projection, samples, row.length), row.length);
    EXPECT_EQ(std::accumulate(scales.begin(), scales.end(), std::int64_t{0}), row.scale_sum);
  }
}

TEST(BuildAxisRegisters, EncodesTheParametersInTwosComplement) {
  AxisCorrection axis = Correction(kArchCurve, 0, -32);
  axis.Parameters.Linearity = -8;
  axis.Parameters.Position = -32767;
  axis.Parameters.Stadium = 1;
  const AxisRegisters registers = BuildAxisRegisters(axis, 1024, 768);
  const AxisRegisters expected = {
      "0000", "0180", "E0", "F8", "00", "01", "0080", "00", std::string(766, '0')};
  EXPECT_EQ(registers, expected);
  axis.Parameters.Position = 32767;
  EXPECT_EQ(BuildAxisRegisters(axis, 1024, 768)[kScroll], "FF7F");
}

TEST(RebuildLineScales, FollowsTheMeantScalesOfSmoothCurves) {
  for (const GoldenCase& row : GoldenCases()) {
    if (row.name == "too coarse for four bits" || row.name.starts_with("triangle")) continue;
    SCOPED_TRACE(row.name);
    const std::vector<std::int32_t> scales =
        RebuildLineScales(BuildAxisRegisters(row.axis, row.length, row.count), row.count);
    EXPECT_EQ(std::accumulate(scales.begin(), scales.end(), std::int64_t{0}), row.scale_sum);
  }
}

TEST(SecondDifferenceTable, HoldsEachDifferenceToFourBits) {
  // Pairs of lines (2, 3), (4, 5): the later line's digit stands first.
  const std::tuple<const char*, std::vector<std::int32_t>, const char*> cases[] = {
      {"flat", {100, 100, 100, 100, 100, 100}, "0000"},
      {"-8 and 7 pass", {100, 100, 92, 91}, "78"},
      {"-9 becomes -8, the next line starts from there", {100, 100, 91, 82}, "F8"},
      {"8 becomes 7, the next line starts from there", {100, 100, 108, 116}, "17"},
      {"a last even line has no partner", {100, 101, 103, 104, 109}, "F1"},
      {"two lines have no second difference", {100, 99}, ""},
      {"three lines neither", {100, 99, 90}, ""},
  };
  for (const auto& [name, scales, table] : cases) {
    EXPECT_EQ(SecondDifferenceTable(scales), table) << name;
  }
}

TEST(RebuildLineScales, ReadsByHandWrittenTables) {
  AxisRegisters registers = {"0000", "0000", "E0", "00", "00", "00", "F0FF", "FE", "8731"};
  const std::vector<std::int32_t> expected = {65520, 65518, 65523, 65520, 65518, 65519};
  EXPECT_EQ(RebuildLineScales(registers, 6), expected);
  // An odd count: the last line keeps the difference of the one before.
  EXPECT_EQ(RebuildLineScales(registers, 7).back(), 65520);
  EXPECT_THROW(RebuildLineScales(registers, 8), Fault);
  registers[kCorre2] = "G731";
  EXPECT_THROW(RebuildLineScales(registers, 6), Fault);
}

TEST(PanelExtension, StartsBeyondTheEdgeAndReportsOverflow) {
  AxisParameters parameters;
  const std::vector<double> profile = {900, 1000, 950}, enlarged = {1100};
  for (const auto& [optical, extension] : {std::pair(-33, 3277), {-32, 0}, {32, 0}, {33, 3277}}) {
    parameters.Optical = static_cast<std::int16_t>(optical);
    EXPECT_EQ(PanelExtension(parameters, enlarged, 1000), extension) << optical;
  }
  // k = 2: a = -200, 0, -100; widest right half 500, leftmost -550; 50 of 1000 pixels more.
  parameters.Optical = 64;
  EXPECT_EQ(PanelExtension(parameters, profile, 1000), 1638);
  parameters.Optical = -64;
  EXPECT_EQ(PanelExtension(parameters, profile, 1000), 1638);
  // Sums, halves and the result are each rounded, halves to even; a narrower picture needs none.
  for (const auto& [size, extension] :
       {std::pair(1033.8, 1081), {1034.4, 1147}, {1000.3, 0}, {500.0, 0}}) {
    for (const int optical : {-64, 64}) {
      parameters.Optical = static_cast<std::int16_t>(optical);
      EXPECT_EQ(PanelExtension(parameters, std::vector<double>{size}, 1000), extension) << size;
    }
  }
  EXPECT_EQ(FaultOf([&] { PanelExtension(parameters, std::vector<double>{30000}, 1000); }),
            FaultCode::kDoesNotFit);
}

TEST(BuildRegisters, GivesEachAxisItsOwnLines) {
  CorrectionData correction;
  ResetToScreenType(correction);
  correction.Axes[kHorizontal].Distortion = 40;
  const RegisterSet registers = BuildRegisters(correction, {1024, 768});
  EXPECT_EQ(registers[kHorizontal][kCorre2].size(), 766u);
  EXPECT_EQ(registers[kVertical][kCorre2], std::string(1022, '0'));
  // The diagonal line's narrow end: 0.9 of 1024 pixels.
  EXPECT_EQ(UnsignedRegisterValue(registers[kHorizontal][kCorre0]), 36409);
  EXPECT_EQ(RebuildLineScales(registers[kHorizontal], 768).size(), 768u);
}

TEST(LineSizeProfile, FollowsTheFormulaOfEachVariant) {
  const std::vector<double> curve = {0.75, 1.0, 0.9}, full = {0.0, 0.5, 1.0};
  const double first = (0.9 + 0.5) / 1.5 * 1000, last = (0.96 + 0.5) / 1.5 * 1000;
  // samples, expected: lines of length 1000
  using Row = std::tuple<const char*, AxisParameters, std::int16_t, std::vector<double>,
                         std::vector<double>>;
  const Row cases[] = {
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
  for (const auto& [name, parameters, projection, samples, expected] : cases) {
    SCOPED_TRACE(name);
    const std::vector<double> profile = LineSizeProfile(parameters, projection, samples, 1000);
    ASSERT_EQ(profile.size(), expected.size());
    for (std::size_t i = 0; i < profile.size(); ++i) {
      EXPECT_NEAR(profile[i], expected[i], 1e-9) << "line " << i;
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

TEST(EvaluateCurve, FollowsEveryMethod) {
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
  const std::tuple<const char*, CurveDefinition, Points> cases[] = {
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
  for (const auto& [name, curve, expected] : cases) {
    SCOPED_TRACE(name);
    const PreparedCurve prepared = PrepareCurve(curve);
    for (const CurvePoint& point : expected) {
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
