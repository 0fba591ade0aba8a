#include "model/registers.h"

#include <gtest/gtest.h>

#include <numeric>

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
  const struct {
    const char* name;
    std::vector<std::int32_t> scales;
    const char* table;
  } cases[] = {
      {"flat", {100, 100, 100, 100, 100, 100}, "0000"},
      {"-8 and 7 pass", {100, 100, 92, 91}, "78"},
      {"-9 becomes -8, the next line starts from there", {100, 100, 91, 82}, "F8"},
      {"8 becomes 7, the next line starts from there", {100, 100, 108, 116}, "17"},
      {"a last even line has no partner", {100, 101, 103, 104, 109}, "F1"},
      {"two lines have no second difference", {100, 99}, ""},
      {"three lines neither", {100, 99, 90}, ""},
  };
  for (const auto& row : cases) {
    EXPECT_EQ(SecondDifferenceTable(row.scales), row.table) << row.name;
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

}  // namespace
}  // namespace warpline
