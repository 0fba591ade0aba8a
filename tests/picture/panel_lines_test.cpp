#include "picture/panel_lines.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <numbers>

#include "core/conversions.h"
#include "model/registers.h"
#include "picture/deviation.h"
#include "picture/picture.h"
#include "picture/test_picture.h"
#include "picture/wall.h"
#include "sim/device/projector.h"
#include "tests/files/file_fixture.h"
#include "tests/support/curves.h"
#include "tests/support/said.h"
#include "tests/support/sim_hex.h"
#include "tests/support/source_folder.h"

namespace warpline::sim {
namespace {

// A shipped correction, as the tool reads it.
struct Example {
  std::string Name;
  CorrectionData Correction;
};

std::vector<Example> Examples() {
  std::vector<Example> examples;
  for (const auto& entry : std::filesystem::directory_iterator(SourceFolder() / "examples")) {
    if (entry.path().extension() != ".wlt") continue;
    FileWorld world;
    EXPECT_EQ(world.Read("wlt", TempFolder::Read(entry.path())), std::nullopt) << entry.path();
    examples.push_back({entry.path().filename().string(), world.data.Correction});
  }
  return examples;
}

// Where the panel shows the picture's left and right end, straight from what was meant: a line
// shorter than the panel is held where the optical centre says.
struct Ends {
  double left;
  double right;
};

Ends MeantEnds(double size, int length, const AxisParameters& parameters) {
  const double inset = length - size;
  const double k = parameters.Optical / 32.0;
  const double shift = -parameters.Position / 32768.0 * length / 2;
  return {inset * (1 - k) / 2 + shift, length - inset * (1 + k) / 2 + shift};
}

Ends ShownEnds(const PanelLine& line, int length) {
  return {-line.Offset / line.Slope, (length - line.Offset) / line.Slope};
}

TEST(PanelLines, ShowEachExampleWithinAPixelOfWhatWasMeant) {
  int compared = 0;
  for (const Example& example : Examples()) {
    for (const PanelSize panel :
         {PanelSize{800, 600}, PanelSize{1024, 768}, PanelSize{1920, 1200}}) {
      const RegisterSet registers = BuildRegisters(example.Correction, panel);
      for (const Axis axis : {kHorizontal, kVertical}) {
        const AxisCorrection correction = CorrectionOf(example.Correction, axis);
        if (std::abs(correction.Parameters.Optical) > 32) continue;  // drawn smaller as a whole
        const int length = LineLength(panel, axis);
        EXPECT_TRUE(DeviationOf(example.Correction, panel)[axis].Ranges.empty()) << example.Name;
        const std::vector<double> meant =
            LineSizeProfile(correction.Parameters, correction.Projection,
                            SampleCurve(correction.Curve, LineCount(panel, axis)), length);
        const std::vector<PanelLine> lines = PanelLinesOf(registers[axis], axis, panel);
        const std::vector<LineMark> marks = LineMarks(registers[axis], LineCount(panel, axis));
        for (std::size_t i = 0; i < lines.size(); ++i) {
          if (marks[i] != LineMark::kSure) break;
          const auto [left, right] = MeantEnds(meant[i], length, correction.Parameters);
          const Ends have = ShownEnds(lines[i], length);
          const double off = std::max(std::abs(have.left - left), std::abs(have.right - right));
          ASSERT_LE(off, 1) << example.Name << " axis " << axis << " line " << i;
          ++compared;
        }
      }
    }
  }
  EXPECT_GT(compared, 20000);
}

TEST(PanelLines, DrawEverythingSmallerWhenTheCentreLiesOutside) {
  const PanelSize panel{1024, 768};
  CorrectionData correction;
  ResetToScreenType(correction);
  for (const int optical : {-48, -33, 40, 64}) {
    for (std::int16_t& flag : correction.Projection) flag = static_cast<std::int16_t>(optical > 0);
    correction.Axes[kVertical].Distortion = 30;
    correction.Axes[kVertical].Optical = static_cast<std::int16_t>(optical);
    const RegisterSet registers = BuildRegisters(correction, panel);
    std::set<double> ends;
    for (const PanelLine& line : PanelLinesOf(registers[kVertical], kVertical, panel)) {
      const auto [first, last] = ShownEnds(line, panel.Height);
      ends.insert({first, last});
    }
    EXPECT_NEAR(*ends.begin(), 0, 1.5) << optical << ": all fits, and fills the panel";
    EXPECT_NEAR(*ends.rbegin(), panel.Height, 1.5) << optical;
  }
}

// Scale of line i: q0 + i * d1 + the sum of (i - j + 1) * s[j] over the lines j = 2..i.
long ScaleOf(const AxisRegisters& registers, long i) {
  const std::string& table = registers[kCorre2];
  long scale =
      UnsignedRegisterValue(registers[kCorre0]) + i * SignedRegisterValue(registers[kCorre1]);
  for (std::size_t m = 0; m < table.size() && static_cast<long>(m) + 2 <= i; ++m) {
    scale += (i - static_cast<long>(m) - 1) * ((HexDigitValue(table[m ^ 1]) ^ 8) - 8);
  }
  return scale;
}

// A line shrinks towards the centre k, and all by what the extension asks for.
void ExpectDeviation(const AxisCorrection& axis, int length, int count) {
  const AxisRegisters registers = BuildAxisRegisters(axis, length, count);
  const AxisDeviation found = DeviationOf(axis, length, count);
  const double farther = (1 + std::abs(axis.Parameters.Optical) / 32.0) / 2;
  const double smaller = 1 + UnsignedRegisterValue(registers[kPanelExt]) / 32768.0;
  double most = 0, rounding = 0;
  int i = 0;
  for (const double meant :
       LineSizeProfile(axis.Parameters, axis.Projection, SampleCurve(axis.Curve, count), length)) {
    const long scale = ScaleOf(registers, i);
    const double shown = 32768.0 * length / static_cast<double>(scale);
    const double off =
        std::min<double>(length, (scale > 0 ? std::abs(meant - shown) * farther : meant) / smaller);
    rounding = std::max(rounding, meant * meant * farther / 32767 / length);
    const bool in_range = std::ranges::any_of(
        found.Ranges, [i](LineRange range) { return range.First <= i && i <= range.Last; });
    ASSERT_TRUE(in_range == (off > 1) || std::abs(off - 1) <= rounding) << "line " << i;
    most = in_range ? std::max(most, off) : most;
    ASSERT_TRUE(i++ != found.Line || !in_range || std::abs(found.Pixels - off) <= rounding);
  }
  ASSERT_NEAR(found.Pixels, most, rounding);
}

TEST(Deviation, IsWhatTheTextsOfTheRegistersSay) {
  for (const CurveShape shape : {kArch, kTriangle}) {
    for (const int distortion : {-150, -60, 0, 40, 90, 150}) {
      for (const int optical : {-64, -33, -17, -13, 0, 16, 33}) {
        for (const int amplitude : {-127, 0, 127}) {
          SCOPED_TRACE(testing::Message() << distortion << ", " << optical << ", " << amplitude);
          AxisCorrection axis{Parameters(distortion, optical, 640, amplitude), optical > 16, {}};
          ResetCurveDefinition(axis.Curve, shape);
          ASSERT_NO_FATAL_FAILURE(ExpectDeviation(axis, 240, 321));
        }
      }
    }
  }
}

TEST(LineMarks, FollowTheLimitOfTheDifferences) {
  // Differences of lines 2 to 9: 0, 7, -8, 7, 1, -1, 0, 0.
  const AxisRegisters registers{"0000", "0000", "00", "00", "00", "00", "0080", "00", "7078F100"};
  using enum LineMark;
  const std::vector<LineMark> marks = LineMarks(registers, 10);
  EXPECT_EQ(marks, (std::vector<LineMark>{kSure, kSure, kSure, kAtLimit, kAtLimit, kAtLimit,
                                          kBehindLimit, kBehindLimit, kBehindLimit, kBehindLimit}));
}

TEST(Wall, HasTheShapeThatItsNameSays) {
  using enum WallShape;
  const std::tuple<WallShape, double, double, double, double> cases[] = {
      {kFlat, 0.5, 1, 1, 4},
      {kCylinder, 0.5, 1, 7, 4.26795},  // 2 - sqrt(3) behind the middle of a radius of 2
      {kCylinder, -0.5, 1, 7, 3.73205},
      {kCylinder, 0.5, 3, 0, 0},
      {kCylinderUpright, 0.5, 7, 1, 4.26795},
      {kSphere, 0.5, 0.6, -0.8, 4.26795},
      {kCorner, 0.5, -1, 7, 4.41421},  // the tangent of 22.5 degrees
      {kCeiling, 0.5, 7, -1, 4.41421}};
  for (const auto& [shape, curvature, x, y, depth] : cases) {
    EXPECT_NEAR(WallDepth({shape, 4, curvature}, x, y), depth, 1e-5) << static_cast<int>(shape);
  }
}

// A corner's two walls turn away evenly, and so the size of a column on the panel, seen from the
// middle, falls evenly: a setting that does just this must show level lines level.
TEST(Wall, ShowsStraightLinesWhenTheSettingIsRight) {
  const PanelSize panel{1024, 768};
  Wall wall;
  wall.Shape = WallShape::kCorner;
  wall.Curvature = 0.4;
  const double turn = std::tan(wall.Curvature * std::numbers::pi / 4) / kThrowRatio;
  std::vector<std::int32_t> scales;
  double nearest = 1;
  for (int x = 0; x < panel.Width; ++x) {
    const double off = std::abs(x + 0.5 - panel.Width / 2.0) / panel.Width;
    nearest = std::min(nearest, 1 - turn * off);
    scales.push_back(static_cast<std::int32_t>(std::lround(32768 / (1 - turn * off))));
  }
  ASSERT_LT(nearest, 0.9);
  // The lens's axis meets the bottom edge; there the columns are held.
  const std::vector<PanelLine> columns = PanelLinesOf(scales, panel.Height, {-1, 0, 0});
  const double half = wall.Distance / kThrowRatio / 2;
  for (const double height : {-0.2, -0.6, -1.0}) {
    std::set<double> shown;
    std::set<double> bare;
    for (double x = -0.8 * half; x <= 0.8 * half; x += half / 50) {
      std::array<double, 2> at{};
      ASSERT_TRUE(PanelPositionAt(wall, panel, x, height, at));
      const PanelLine& column = columns[static_cast<std::size_t>(at[0])];
      shown.insert(column.Offset + column.Slope * at[1]);
      bare.insert(at[1]);
    }
    EXPECT_LT(*shown.rbegin() - *shown.begin(), 1) << height;
    EXPECT_GT(*bare.rbegin() - *bare.begin(), 5) << "without the setting, " << height;
  }
}

RgbImage White(PanelSize size) {
  RgbImage image = BlackImage(size);
  std::ranges::fill(image.Pixels, std::uint8_t{255});
  return image;
}

// Four fifths of the image: as many pixels as the panel has.
TEST(Wall, PictureFillsItsShareOfTheImage) {
  const RgbImage image = WallPicture(White({160, 120}), {WallShape::kFlat}, {200, 150});
  const std::tuple<int, int, int> cases[] = {{19, 75, 44},    {20, 75, 255}, {179, 75, 255},
                                             {180, 75, 44},   {100, 14, 44}, {100, 15, 255},
                                             {100, 134, 255}, {100, 135, 44}};
  for (const auto& [x, y, light] : cases) EXPECT_EQ(image.At(x, y)[0], light) << x << ", " << y;
}

// The lines go where the depth of the nearer edge says: on a wall that comes nearer at the sides
// its corners are those of the picture.
TEST(Wall, FrameIsTheLargestRectangleInsideThePicture) {
  const PanelSize panel{160, 120};
  RgbImage frame = BlackImage({200, 150});
  DrawStraightFrame(frame, {WallShape::kCorner, 4, -0.4, LensAxis::kBottom}, panel);
  // A ray at 1 / 3 meets 4 - tan(18 degrees) * x at 0.9023 of the distance.
  const std::tuple<int, int, bool> cases[] = {{27, 75, true},  {28, 75, false},   {172, 75, true},
                                              {100, 26, true}, {100, 25, false},  {100, 135, true},
                                              {27, 26, true},  {100, 100, false}, {27, 25, false}};
  for (const auto& [x, y, drawn] : cases) {
    EXPECT_EQ(frame.At(x, y)[1] > 0, drawn) << x << ", " << y;
  }
  RgbImage missed = BlackImage({200, 150});
  DrawStraightFrame(missed, {WallShape::kSphere, 4, 1, LensAxis::kBottom}, panel);
  EXPECT_EQ(std::ranges::count(missed.Pixels, 0), std::ssize(missed.Pixels));
}

TEST(Picture, MatchesAGoldenOne) {
  const PanelSize panel{320, 240};
  const std::vector<Example> examples = Examples();
  const auto example = std::ranges::find(examples, "cylinder.wlt", &Example::Name);
  ASSERT_NE(example, examples.end());
  const RgbImage shown =
      PanelPicture(TestPicture(panel), BuildRegisters(example->Correction, panel));
  NamedText reason;
  const auto golden =
      ImageOfPng(TempFolder::Read(SourceFolder() / "tests/picture/cylinder.png"), reason);
  ASSERT_TRUE(golden) << Said(reason);
  ASSERT_EQ(golden->Pixels.size(), shown.Pixels.size());
  int most = 0;
  double sum = 0;
  for (std::size_t i = 0; i < shown.Pixels.size(); ++i) {
    const int off = std::abs(golden->Pixels[i] - shown.Pixels[i]);
    sum += off;
    most = std::max(most, off);
  }
  EXPECT_LE(most, 8);
  EXPECT_LT(sum / static_cast<double>(shown.Pixels.size()), 0.5);
}

constexpr PanelSize kPanel{160, 120};

std::vector<std::int32_t> Flat(int count) {
  return std::vector<std::int32_t>(static_cast<std::size_t>(count), kUnitScale);
}

// Lines of these scales, shorter ones in the middle.
std::vector<PanelLine> Rows(const std::vector<std::int32_t>& scales) {
  return PanelLinesOf(scales, kPanel.Width, {});
}
std::vector<PanelLine> Columns(const std::vector<std::int32_t>& scales) {
  return PanelLinesOf(scales, kPanel.Height, {});
}

// The length of a white row or column in pixels, those at its ends counted by their brightness.
double Extent(int count, const std::function<const std::uint8_t*(int)>& at) {
  double sum = 0;
  for (int i = 0; i < count; ++i) sum += at(i)[0] / 255.0;
  return sum;
}

TEST(Picture, IsTheTestPictureWhenNothingIsCorrected) {
  const RgbImage picture = PanelPicture(TestPicture(kPanel), NeutralRegisters(kPanel));
  EXPECT_EQ(picture.Pixels, TestPicture(kPanel).Pixels);
}

TEST(Picture, MakesEachLineAsLongAsItsScaleSays) {
  std::vector<std::int32_t> rows;
  std::vector<std::int32_t> columns;
  for (int y = 0; y < kPanel.Height; ++y) rows.push_back(kUnitScale + 250 * y);
  for (int x = 0; x < kPanel.Width; ++x) columns.push_back(kUnitScale + 90 * (x % 100));
  const RgbImage by_rows = WarpedPicture(White(kPanel), Rows(rows), Columns(Flat(kPanel.Width)));
  for (int y = 0; y < kPanel.Height; ++y) {
    const double meant = kPanel.Width * 32768.0 / rows[static_cast<std::size_t>(y)];
    EXPECT_NEAR(Extent(kPanel.Width, [&](int x) { return by_rows.At(x, y); }), meant, 0.02) << y;
  }
  const RgbImage by_columns =
      WarpedPicture(White(kPanel), Rows(Flat(kPanel.Height)), Columns(columns));
  for (int x = 0; x < kPanel.Width; ++x) {
    const double meant = kPanel.Height * 32768.0 / columns[static_cast<std::size_t>(x)];
    EXPECT_NEAR(Extent(kPanel.Height, [&](int y) { return by_columns.At(x, y); }), meant, 0.02)
        << x;
  }
}

TEST(Picture, HalvesARowByMeetingPairsOfPixels) {
  std::vector<std::int32_t> rows = Flat(kPanel.Height);
  rows[31] = 2 * kUnitScale;
  rows[32] = 0;
  rows[33] = -5;
  const RgbImage source = TestPicture(kPanel);
  const RgbImage warped = WarpedPicture(source, Rows(rows), Columns(Flat(kPanel.Width)));
  for (int x = 40; x < 120; ++x) {
    for (int i = 0; i < 3; ++i) {
      const double pair = (source.At(2 * x - 80, 31)[i] + source.At(2 * x - 79, 31)[i]) / 2.0;
      EXPECT_NEAR(warped.At(x, 31)[i], pair, 1.0) << x;
    }
  }
  for (const int y : {32, 33}) {
    EXPECT_EQ(Extent(kPanel.Width, [&](int x) { return warped.At(x, y); }), 0) << y;
  }
  EXPECT_TRUE(std::equal(source.At(0, 34), source.At(0, 35), warped.At(0, 34)));
}

TEST(Picture, TakesAnotherSize) {
  RgbImage picture = BlackImage({4, 2});
  picture.Pixels = FromHex("000000101010202020303030808080909090A0A0A0B0B0B0");
  const auto resized = [&](PanelSize size) { return ToHex(Resized(picture, size).Pixels); };
  EXPECT_EQ(resized({2, 2}), "080808282828888888A8A8A8") << "each pixel is the mean of two";
  EXPECT_EQ(resized({4, 1}), "404040505050606060707070");
  EXPECT_EQ(resized({4, 3}),
            "000000101010202020303030404040505050606060707070808080909090A0A0A0B0B0B0");
}

// 2 by 2 pixels with transparency: red, half green; invisible blue, white.
constexpr const char* kTransparentPng =
    "89504E470D0A1A0A0000000D494844520000000200000002080600000072B60D24000000144944415478DA63"
    "F8CFC0F01F081B18C0341000003FD708795FC76DB10000000049454E44AE426082";

// A header of 16384 by 16384 pixels with 16 bits a channel, and hardly anything behind it.
constexpr const char* kHugePng =
    "89504E470D0A1A0A0000000D4948445200004000000040001006000000F958CCC70000000949444154789C6300"
    "00000100015EFF7DF90000000049454E44AE426082";

TEST(Picture, OfTooManyPixelsIsNotDecoded) {
  const Bytes huge = FromHex(kHugePng);
  NamedText reason;
  EXPECT_FALSE(ImageOfPng(std::string(huge.begin(), huge.end()), reason));
  EXPECT_EQ(Said(reason), "it has 16384x16384 pixels; 2 each way to 64000000 in all can be used");
}

TEST(Picture, IsWrittenAndReadAsAPng) {
  const RgbImage picture = TestPicture(kPanel);
  const std::optional<std::string> png = PngOf(picture);
  ASSERT_TRUE(png);
  NamedText reason;
  const std::optional<RgbImage> read = ImageOfPng(*png, reason);
  ASSERT_TRUE(read) << Said(reason);
  EXPECT_EQ((PanelSize{read->Width, read->Height}), kPanel);
  EXPECT_EQ(read->Pixels, picture.Pixels);
  const Bytes transparent = FromHex(kTransparentPng);
  const auto on_black = ImageOfPng(std::string(transparent.begin(), transparent.end()), reason);
  ASSERT_TRUE(on_black) << Said(reason);
  EXPECT_EQ(ToHex(on_black->Pixels), "FF0000008000000000FFFFFF");
  EXPECT_FALSE(ImageOfPng(png->substr(0, png->size() / 2), reason));
  EXPECT_EQ(Said(reason), "it is damaged");
  EXPECT_FALSE(ImageOfPng("", reason));
  EXPECT_FALSE(ImageOfPng("GIF89a", reason));
  EXPECT_EQ(Said(reason), "it is no PNG picture");
}

}  // namespace
}  // namespace warpline::sim
