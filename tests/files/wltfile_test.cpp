#include <cmath>

#include "core/fault.h"
#include "tests/files/file_fixture.h"

namespace warpline {
namespace {

const std::string kVersion3 = "[Warpline Tool Data File 3.0]\r\n";
const std::string kVersion2 = "[Warpline Tool Data File 2.0]\r\n";
const std::string kVersion1 = "[Warpline Tool Data File]\r\n";

struct Acceptance {
  const char* name;
  std::string text;
  std::optional<FileErrorCode> expected;
};

TEST(WltFile, AcceptsOrRefuses) {
  const std::optional<FileErrorCode> accepted;
  const Acceptance rows[] = {
      {"empty text", "", kFileCorrupted},
      {"header alone, everything else as reset", kVersion3, accepted},
      {"header without line end", "[Warpline Tool Data File 3.0]", accepted},
      {"header inside other text, with a comment", "x[Warpline Tool Data File 3.0]y;z", accepted},
      {"header behind a comment sign", ";[Warpline Tool Data File 3.0]", kFileCorrupted},
      {"header with blanks in it", "[ Warpline Tool Data File 3.0 ]", kFileCorrupted},
      {"byte order mark", "\xEF\xBB\xBF" + kVersion3, accepted},
      {"version 1", kVersion1 + "ScreenType=1", kFileVersionDiffers},
      {"version 1 before 3", kVersion1 + kVersion3, kFileVersionDiffers},
      {"version 1 behind 3 is a line like others", kVersion3 + kVersion1, accepted},
      {"later version", "[Warpline Tool Data File 4.0]\n", kFileCorrupted},
      {"nonsense before the header", "ScreenType=99\nrubbish\n" + kVersion3, accepted},
      {"empty line before the header", "\r\n" + kVersion3, kFileCorrupted},
      {"blank line before the header", " \r\n" + kVersion3, accepted},
      {"nonsense after an empty line", kVersion3 + "\nNonsense=1", accepted},
      {"no equals sign", kVersion3 + "rubbish", accepted},
      {"comment line", kVersion3 + ";ScreenType=99", accepted},
      {"unknown key", kVersion3 + "Colour=1", kFileValueWrong},
      {"key in other case", kVersion3 + "screentype=1", kFileValueWrong},
      {"axis letter alone", kVersion3 + "H=1", kFileValueWrong},
      {"no key", kVersion3 + "=1", kFileValueWrong},
      {"decimal point", kVersion3 + "OpticalH=4.0", kFileValueWrong},
      {"plus sign", kVersion3 + "OpticalH=+4", kFileValueWrong},
      {"tab before the value", kVersion3 + "OpticalH=\t4", kFileValueWrong},
      {"second equals sign", kVersion3 + "OpticalH=4=4", kFileValueWrong},
      {"NUL in the value", kVersion3 + std::string("OpticalH=4\0", 11), kFileValueWrong},
      {"one-digit slot", kVersion3 + "CorreDataPtsX5H=500000", kFileValueWrong},
      {"slot 16", kVersion3 + "CorreDataPtsX16H=0", kFileValueWrong},
      {"negative slot", kVersion3 + "CorreDataPtsX-0H=0", kFileValueWrong},
      {"version 2, two-digit slot", kVersion2 + "CorreDataPtsX05H=0", kFileValueWrong},
      {"version 2, slot 8", kVersion2 + "CorreDataPtsX8H=0", kFileValueWrong},
      {"DistortionH above in version 2", kVersion2 + "DistortionH=301", kFileValueWrong},
      {"Optical beyond its projection", kVersion3 + "OpticalH=20", kFileValueWrong},
      {"Optical within its projection", kVersion3 + "OpticalH=20\nProjectionH=1", accepted},
      {"reset Optical under the other projection", kVersion3 + "ProjectionV=1", kFileValueWrong},
      {"Optical limits", kVersion3 + "OpticalH=-64\nProjectionV=1\nOpticalV=64", accepted},
      {"Optical below", kVersion3 + "OpticalH=-65", kFileValueWrong},
      {"Optical below, reversed", kVersion3 + "ProjectionV=1\nOpticalV=-17", kFileValueWrong},
      {"Y too low", kVersion3 + "CorreDataPtsY00H=749999", kFileValueWrong},
      {"Y too low behind the last point", kVersion3 + "CorreDataPtsY02H=749999", accepted},
      {"first X not 0", kVersion3 + "CorreDataPtsX00V=1", kFileValueWrong},
      {"last X not 1", kVersion3 + "CorreDataPtsX01H=999999", kFileValueWrong},
      {"X descends", kVersion3 + "CorreDataPtsX01V=1000000\nCorreDataPtsX02V=999999",
       kFileValueWrong},
      {"X stays", kVersion3 + "CorreDataPtsX01V=1000000", accepted},
      {"one more point, not set", kVersion3 + "CorrePointNumH=3", kFileValueWrong},
  };
  for (const Acceptance& row : rows) {
    FileWorld world;
    EXPECT_EQ(world.Read("wlt", row.text), row.expected) << row.name;
    EXPECT_TRUE(world.display.messages.empty()) << row.name;
  }
}

TEST(WltFile, TakesEachFieldWithinItsLimits) {
  const struct {
    const char* key;
    int low;
    int high;
  } rows[] = {
      {"ScreenType", 0, 5},
      {"Projection", 0, 1},
      {"Distortion", -300, 300},
      {"Optical", -127, 127},
      {"Linearity", -127, 127},
      {"Amplitude", -127, 127},
      {"Position", -32767, 32767},
      {"Stadium", 0, 1},
      {"CorreFixed", 0, 1},
      {"CorreSymmetry", 0, 1},
      {"CorrePointNum", 2, 16},
      {"CorreInterp", 1, 5},
      {"CorreDataPtsX15", 0, 1000000},
      {"CorreDataPtsY00", 0, 1000000},
  };
  FileWorld world;
  const auto module = MakeFormatModule("wlt", {world.global, world.messages, world.file.Staging()});
  module->ParseLine(kVersion3);
  for (const auto& row : rows) {
    for (const char* axis : {"H", "V"}) {
      const auto takes = [&](int value) {
        return module->ParseLine(std::string(row.key) + axis + "=" + std::to_string(value));
      };
      EXPECT_FALSE(takes(row.low - 1)) << row.key << axis;
      EXPECT_TRUE(takes(row.low)) << row.key << axis;
      EXPECT_TRUE(takes(row.high)) << row.key << axis;
      EXPECT_FALSE(takes(row.high + 1)) << row.key << axis;
    }
  }
}

struct Stored {
  const char* name;
  std::string text;
  double (*field)(const CorrectionData&);
  double expected;
};

template <std::size_t axis, auto field>
double Parameter(const CorrectionData& data) {
  return data.Axes[axis].*field;
}

TEST(WltFile, StoresWhatLinesSay) {
  constexpr auto kDistortionH = Parameter<0, &AxisParameters::Distortion>;
  constexpr auto kDistortionV = Parameter<1, &AxisParameters::Distortion>;
  constexpr auto kPositionV = Parameter<1, &AxisParameters::Position>;
  constexpr auto kOpticalH = Parameter<0, &AxisParameters::Optical>;
  const auto screen_type = [](const CorrectionData& data) -> double { return data.ScreenType; };
  const auto slot_0 = [](const CorrectionData& data) { return data.Curves[0].CorreDataPts[0].Y; };
  const auto slot_5 = [](const CorrectionData& data) { return data.Curves[0].CorreDataPts[5].X; };
  const Stored rows[] = {
      {"blanks everywhere", kVersion3 + " Distortion V = - 1 5 0 ", kDistortionV, -150},
      {"missing axis letter is H", kVersion3 + "Distortion=7", kDistortionH, 7},
      {"axis letter behind ScreenType", kVersion3 + "ScreenTypeV=4", screen_type, 4},
      {"slot number on another key", kVersion3 + "Distortion05H=7", kDistortionH, 7},
      {"the last of several", kVersion3 + "DistortionH=7\nDistortionH=8", kDistortionH, 8},
      {"comment behind the value", kVersion3 + "DistortionH=7;8", kDistortionH, 7},
      {"empty value", kVersion3 + "OpticalH=", kOpticalH, 0},
      {"lone minus", kVersion3 + "OpticalH=-", kOpticalH, 0},
      {"minus between digits", kVersion3 + "OpticalH=1-2", kOpticalH, 12},
      {"leading zeros", kVersion3 + "OpticalH=-00000000000000000000007", kOpticalH, -7},
      {"highest position", kVersion3 + "PositionV=32767", kPositionV, 32767},
      {"out of range keeps", kVersion3 + "PositionV=5\nPositionV=40000", kPositionV, 5},
      {"out of range Distortion clears", kVersion3 + "DistortionH=5\nDistortionH=301", kDistortionH,
       0},
      {"version 3 Distortion as it is", kVersion3 + "DistortionH=300", kDistortionH, 300},
      {"version 2 thirds, down", kVersion2 + "DistortionH=7", kDistortionH, 2},
      {"version 2 thirds, 4", kVersion2 + "DistortionH=4", kDistortionH, 1},
      {"version 2 thirds, up", kVersion2 + "DistortionH=5", kDistortionH, 2},
      {"version 2 thirds, lowest", kVersion2 + "DistortionH=-300", kDistortionH, -100},
      {"both headers in a line",
       "[Warpline Tool Data File 3.0][Warpline Tool Data File 2.0]\n"
       "DistortionH=6",
       kDistortionH, 6},
      {"second header changes nothing", kVersion2 + kVersion3 + "DistortionH=6", kDistortionH, 2},
      {"point without slot number", kVersion3 + "CorreDataPtsYH=800000", slot_0, 0.8},
      {"version 2 slot", kVersion2 + "CorreDataPtsX5H=500000", slot_5, 0.5},
      {"version 3 slot", kVersion3 + "CorreDataPtsX05H=1000000", slot_5, 1.0},
  };
  for (const Stored& row : rows) {
    FileWorld world;
    world.Read("wlt", row.text);
    EXPECT_EQ(row.field(world.file.Staging()), row.expected) << row.name;
    EXPECT_EQ(world.global.Correction, FileWorld().global.Correction) << row.name;
  }
}

TEST(WltFile, DigitsBeyondTheirTypeAreFaults) {
  const std::string rows[] = {
      kVersion3 + "ScreenType=32768",
      kVersion3 + "ProjectionV=-32769",
      kVersion3 + "PositionH=2147483648",
      kVersion3 + "Unknown=-2147483649",
      kVersion3 + "CorreFixedH=" + std::string(1 << 20, '9'),
  };
  for (const std::string& text : rows) {
    FileWorld world;
    try {
      world.Read("wlt", text);
      FAIL() << text.substr(0, 60);
    } catch (const Fault& fault) {
      EXPECT_EQ(fault.code(), FaultCode::kDoesNotFit);
    }
  }
  EXPECT_EQ(FileWorld().Read("wlt", kVersion3 + "ScreenType=32767"), kFileValueWrong);
  EXPECT_EQ(FileWorld().Read("wlt", kVersion3 + "PositionH=2147483647"), kFileValueWrong);
}

// A correction with another value in every field, as in the golden file.
CorrectionData EveryFieldDifferent() {
  CorrectionData data;
  data.ScreenType = 5;
  data.Projection = {0, 1};
  data.Axes[0] = {-150, -64, -127, 125, -32767, 0};
  data.Axes[1] = {149, 63, 126, -124, 32766, 1};
  data.Curves[0] = {0, 1, 16, 5, {}};
  data.Curves[1] = {1, 0, 3, 4, {}};
  for (std::size_t slot = 0; slot < kMaxCurvePoints; ++slot) {
    const double base = 60000.0 * static_cast<double>(slot);
    data.Curves[0].CorreDataPts[slot] = {(base + 1) / 1e6, (base + 2) / 1e6};
    data.Curves[1].CorreDataPts[slot] = {(base + 3) / 1e6, (base + 4) / 1e6};
  }
  return data;
}

TEST(WltFile, WritesTheGoldenFile) {
  FileWorld world;
  world.global.Correction = EveryFieldDifferent();
  EXPECT_EQ(world.Written("wlt"), TempFolder::Read(kSourceFolder / "tests/files/golden_3_0.wlt"));
}

TEST(WltFile, ReadsTheGoldenFile) {
  FileWorld world;
  // The points are no curve that the check of the whole accepts; every line is.
  EXPECT_EQ(world.Read("wlt", TempFolder::Read(kSourceFolder / "tests/files/golden_3_0.wlt")),
            kFileValueWrong);
  EXPECT_EQ(world.file.Staging(), EveryFieldDifferent());
}

TEST(WltFile, RoundsMillionthsHalvesToEven) {
  FileWorld world;
  auto& points = world.global.Correction.Curves[kVertical].CorreDataPts;
  points[0].X = 0.0000025;
  points[0].Y = 0.0000035;
  const std::string text = world.Written("wlt").value_or("");
  EXPECT_NE(text.find("\r\nCorreDataPtsX00V=2\r\nCorreDataPtsY00V=4\r\n"), std::string::npos);
}

TEST(WltFile, CannotWriteWhatIsNoNumber) {
  for (const double bad : {std::nan(""), HUGE_VAL, 1e300}) {
    FileWorld world;
    world.global.Correction.Curves[kVertical].CorreDataPts[15].Y = bad;
    EXPECT_EQ(world.Written("wlt"), std::nullopt);
    world.file.Staging().Curves[kHorizontal].CorreDataPts[15].X = bad;
    EXPECT_EQ(world.Written("wls"), std::nullopt);
  }
}

}  // namespace
}  // namespace warpline
