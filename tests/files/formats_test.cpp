#include <cmath>

#include "core/fault.h"
#include "tests/files/file_fixture.h"

namespace warpline {
namespace {

const std::string kVersion3 = "[Warpline Tool Data File 3.0]\r\n";
const std::string kVersion2 = "[Warpline Tool Data File 2.0]\r\n";
const std::string kBoth = "[Warpline Tool Data File 3.0][Warpline Tool Data File 2.0]\n";
const std::string kVersion1 = "[Warpline Tool Data File]\r\n";

TEST(WltFile, KnowsItsHeader) {
  const std::tuple<const char*, std::string, Refusal> rows[] = {
      {"empty text", "", kFileCorrupted},
      {"header alone, everything else as reset", kVersion3, kAccepted},
      {"header without line end", "[Warpline Tool Data File 3.0]", kAccepted},
      {"header inside other text, with a comment", "x[Warpline Tool Data File 3.0]y;z", kAccepted},
      {"header behind a comment sign", ";[Warpline Tool Data File 3.0]", kFileCorrupted},
      {"header with blanks in it", "[ Warpline Tool Data File 3.0 ]", kFileCorrupted},
      {"byte order mark", "\xEF\xBB\xBF" + kVersion3, kAccepted},
      {"version 1", kVersion1 + "ScreenType=1", kFileVersionDiffers},
      {"version 1 before 3", kVersion1 + kVersion3, kFileVersionDiffers},
      {"version 1 behind 3 is a line like others", kVersion3 + kVersion1, kAccepted},
      {"later version", "[Warpline Tool Data File 4.0]\n", kFileCorrupted},
      {"nonsense before the header", "ScreenType=99\nrubbish\n" + kVersion3, kAccepted},
      {"empty line before the header", "\r\n" + kVersion3, kFileCorrupted},
      {"blank line before the header", " \r\n" + kVersion3, kAccepted},
  };
  for (const auto& [name, text, expected] : rows) {
    FileWorld world;
    EXPECT_EQ(world.Read("wlt", text), expected) << name;
    EXPECT_TRUE(world.display.messages.empty()) << name;
  }
}

TEST(WltFile, AcceptsOrRefusesLines) {
  for (const char* lines : {"\nNonsense=1", "rubbish", ";ScreenType=99",
                            // Optical within its projection, at its limits.
                            "OpticalH=20\nProjectionH=1", "OpticalH=-64\nOpticalV=16",
                            "ProjectionV=1\nOpticalV=64", "ProjectionV=1\nOpticalV=-16",
                            // Points that do not count, and X that stays.
                            "CorreDataPtsY02H=749999", "CorreDataPtsX01V=1000000"}) {
    EXPECT_EQ(FileWorld().Read("wlt", kVersion3 + lines), kAccepted) << lines;
  }
  for (const std::string& lines :
       Texts{"Colour=1", "screentype=1", "H=1", "=1", "OpticalH=4.0", "OpticalH=+4", "OpticalH=\t4",
             "OpticalH=4=4", std::string("OpticalH=4\0", 11), "ScreenType=32767",
             "PositionH=2147483647", "CorreDataPtsX5H=500000", "CorreDataPtsX16H=0",
             "CorreDataPtsX-0H=0",
             // Optical beyond its projection: by itself, as reset, by one.
             "OpticalH=20", "ProjectionV=1", "OpticalH=-65", "OpticalH=17",
             "ProjectionV=1\nOpticalV=-17",
             // Y too low, X that does not begin at 0, end at 1 or ascend, a point that is not set.
             "CorreDataPtsY00H=749999", "CorreDataPtsX00V=1", "CorreDataPtsX01H=999999",
             "CorreDataPtsX01V=600000\nCorreDataPtsX02V=599999\nCorrePointNumV=4\n"
             "CorreDataPtsX03V=1000000\nCorreDataPtsY03V=800000",
             "CorrePointNumH=3"}) {
    EXPECT_EQ(FileWorld().Read("wlt", kVersion3 + lines), kFileValueWrong) << lines;
  }
  for (const char* line : {"CorreDataPtsX05H=0", "CorreDataPtsX8H=0", "DistortionH=301"}) {
    EXPECT_EQ(FileWorld().Read("wlt", kVersion2 + line), kFileValueWrong) << line;
  }
}

TEST(WltFile, TakesEachFieldWithinItsLimits) {
  const struct {
    const char* key;
    int low, high;
  } rows[] = {
      {"ScreenType", 0, 5},
      {"Projection", 0, 1},
      {"Distortion", -300, 300},
      {"Optical", -127, 127},
      {"Linearity", -127, 127},
      {"Amplitude", -127, 127},
      {"Stadium", 0, 1},
      {"CorreFixed", 0, 1},
      {"Position", -32767, 32767},
      {"CorreSymmetry", 0, 1},
      {"CorrePointNum", 2, 16},
      {"CorreInterp", 1, 5},
      {"CorreDataPtsX15", 0, 1000000},
      {"CorreDataPtsY00", 0, 1000000},
  };
  FileWorld world;
  const auto module = MakeFormatModule("wlt", world.data, world.messages);
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
  const auto projection_v = [](const CorrectionData& data) -> double { return data.Projection[1]; };
  const auto slot_0 = [](const CorrectionData& data) { return data.Curves[0].CorreDataPts[0].Y; };
  const auto slot_5 = [](const CorrectionData& data) { return data.Curves[0].CorreDataPts[5].X; };
  const std::tuple<std::string, double (*)(const CorrectionData&), double> rows[] = {
      {kVersion3 + " Distortion V = - 1 5 0 ", kDistortionV, -150},
      {kVersion3 + "Distortion=7", kDistortionH, 7},
      {kVersion3 + "ScreenTypeV=4", screen_type, 4},
      {kVersion3 + "Distortion05H=7", kDistortionH, 7},
      {kVersion3 + "DistortionH=7\nDistortionH=8", kDistortionH, 8},
      {kVersion3 + "DistortionH=7;8", kDistortionH, 7},
      {kVersion3 + "OpticalH=", kOpticalH, 0},
      {kVersion3 + "OpticalH=-", kOpticalH, 0},
      {kVersion3 + "OpticalH=1-2", kOpticalH, 12},
      {kVersion3 + "OpticalH=-00000000000000000000007", kOpticalH, -7},
      {kVersion3 + "PositionV=32767", kPositionV, 32767},
      // Out of range keeps the old value, but clears Distortion.
      {kVersion3 + "PositionV=5\nPositionV=40000", kPositionV, 5},
      {kVersion3 + "ScreenType=3\nScreenType=6", screen_type, 3},
      {kVersion3 + "ProjectionV=1\nProjectionV=2", projection_v, 1},
      {kVersion3 + "DistortionH=5\nDistortionH=301", kDistortionH, 0},
      {kVersion3 + "DistortionH=300", kDistortionH, 300},
      // Version 2 counts in thirds, and the last of the headers in the first line that has one
      // counts.
      {kVersion2 + "DistortionH=7", kDistortionH, 2},
      {kVersion2 + "DistortionH=4", kDistortionH, 1},
      {kVersion2 + "DistortionH=5", kDistortionH, 2},
      {kVersion2 + "DistortionH=-300", kDistortionH, -100},
      {kBoth + "DistortionH=6", kDistortionH, 6},
      {kVersion2 + kVersion3 + "DistortionH=6", kDistortionH, 2},
      {kVersion3 + "CorreDataPtsYH=800000", slot_0, 0.8},
      {kVersion2 + "CorreDataPtsX5H=500000", slot_5, 0.5},
      {kVersion3 + "CorreDataPtsX05H=1000000", slot_5, 1.0},
  };
  for (const auto& [text, field, expected] : rows) {
    FileWorld world;
    world.Read("wlt", text);
    EXPECT_EQ(field(world.data.Correction), expected) << text;
  }
}

TEST(WltFile, DigitsBeyondTheirTypeAreFaults) {
  for (const std::string& line :
       Texts{"ScreenType=32768", "ProjectionV=-32769", "PositionH=2147483648",
             "Unknown=-2147483649", "CorreFixedH=" + std::string(1 << 20, '9')}) {
    EXPECT_THROW(FileWorld().Read("wlt", kVersion3 + line), Fault) << line.substr(0, 60);
  }
  EXPECT_THROW(FileWorld().Read("wls", "[Warpline Shape File 2.0]\nCorreFixed=2147483648"), Fault);
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

TEST(WltFile, WritesAndReadsTheGoldenFile) {
  const std::string golden = TempFolder::Read(SourceFolder() / "tests/files/golden_3_0.wlt");
  FileWorld writer;
  writer.data.Correction = EveryFieldDifferent();
  EXPECT_EQ(writer.Written("wlt"), golden);
  FileWorld reader;
  // The points are no curve that the check of the whole accepts; every line is.
  EXPECT_EQ(reader.Read("wlt", golden), kFileValueWrong);
  EXPECT_EQ(reader.data.Correction, EveryFieldDifferent());
}

TEST(WltFile, RoundsMillionthsHalvesToEven) {
  FileWorld world;
  auto& points = world.data.Correction.Curves[kVertical].CorreDataPts;
  points[0].X = 0.0000025;
  points[0].Y = 0.0000035;
  const std::string text = world.Written("wlt").value_or("");
  EXPECT_NE(text.find("\r\nCorreDataPtsX00V=2\r\nCorreDataPtsY00V=4\r\n"), std::string::npos);
}

TEST(WltFile, CannotWriteWhatIsNoNumber) {
  for (const double bad : {std::nan(""), HUGE_VAL, 1e300}) {
    FileWorld world;
    world.data.Correction.Curves[kVertical].CorreDataPts[15].Y = bad;
    EXPECT_EQ(world.Written("wlt"), std::nullopt);
    world.data.Correction.Curves[kHorizontal].CorreDataPts[15].X = bad;
    EXPECT_EQ(world.Written("wls"), std::nullopt);
  }
}

const std::string kShape1 = "[Warpline Shape File]\n";
const std::string kShape2 = "[Warpline Shape File 2.0]\n";

TEST(WlsFile, AcceptsOrRefuses) {
  const std::tuple<std::string, Texts, Texts> rows[] = {
      {kShape1, {"", "CorreDataPtsX7=5"}, {"CorreDataPtsX8=5", "CorreDataPtsX05=5"}},
      {kShape2,
       {"", "CorreDataPtsX15=5"},
       {"CorreDataPtsX5=5", "CorreFixedH=1", "ScreenType=1", "CorreDataPtsX00=1"}},
  };
  for (const auto& [header, accepted, refused] : rows) {
    for (const std::string& line : accepted) {
      EXPECT_EQ(FileWorld().Read("wls", header + line), kAccepted) << line;
    }
    for (const std::string& line : refused) {
      EXPECT_EQ(FileWorld().Read("wls", header + line), kFileValueWrong) << line;
    }
  }
  EXPECT_EQ(FileWorld().Read("wls", "[Warpline Tool Data File 3.0]\n"), kFileCorrupted);
}

TEST(WlsFile, ReadsIntoTheHorizontalStagingCurveAlone) {
  FileWorld world;
  world.data.Correction.Axes[kHorizontal].Optical = 100;  // no matter for a shape
  CorrectionData expected = world.data.Correction;
  expected.Curves[kHorizontal].CorrePointNum = 3;
  expected.Curves[kHorizontal].CorreInterp = kQuadratic;
  expected.Curves[kHorizontal].CorreDataPts[1] = {0.25, 0.9};
  expected.Curves[kHorizontal].CorreDataPts[2] = {1.0, 0.75};
  EXPECT_EQ(world.Read("wls", kShape1 + "CorrePointNum=3\nCorreInterp=2\nCorreDataPtsX1=250000\n"
                                        "CorreDataPtsY1=900000\nCorreDataPtsX2=1000000\n"
                                        "CorreDataPtsY2=750000"),
            std::nullopt);
  EXPECT_EQ(world.data.Correction, expected);
}

TEST(WlsFile, WritesTheGoldenFile) {
  FileWorld world;
  world.data.Correction.Curves[kHorizontal] = EveryFieldDifferent().Curves[kHorizontal];
  EXPECT_EQ(world.Written("wls"), TempFolder::Read(SourceFolder() / "tests/files/golden_2_0.wls"));
}

const std::string kHeader = "[Warpline Register File]\r\n";
const std::string kWhole = kHeader +
                           "h_panel_ext=0102\r\nh_scroll=0304\r\nh_opt_center=E0\r\n"
                           "h_linearity=05\r\nh_comp_disp=00\r\nh_stadium=01\r\nh_corre_0=0080\r\n"
                           "h_corre_1=F8\r\nh_corre_2_0000=0123\r\n"
                           "v_panel_ext=0A0B\r\nv_scroll=0C0D\r\nv_opt_center=20\r\n"
                           "v_linearity=15\r\nv_comp_disp=00\r\nv_stadium=00\r\nv_corre_0=FF7F\r\n"
                           "v_corre_1=08\r\nv_corre_2_0000=CDEF\r\n";
const RegisterSet kRegisters{{{"0102", "0304", "E0", "05", "00", "01", "0080", "F8", "0123"},
                              {"0A0B", "0C0D", "20", "15", "00", "00", "FF7F", "08", "CDEF"}}};

std::string Without(std::string text, std::string_view key) {
  const std::size_t start = text.find(key);
  return text.erase(start, text.find('\n', start) + 1 - start);
}

TEST(WlrFile, WritesAndReadsBothAxes) {
  FileWorld world;
  world.data.Registers = kRegisters;
  EXPECT_EQ(world.Written("wlr"), kWhole);
  FileWorld reader;
  reader.data.Registers[0][0] = "FFFF";
  EXPECT_EQ(reader.Read("wlr", kWhole), std::nullopt);
  EXPECT_EQ(reader.data.Registers, kRegisters);
}

TEST(WlrFile, AcceptsOrRefuses) {
  for (const std::string& text :
       Texts{"h_scroll=12345\n" + kWhole, Without(Without(kWhole, "h_comp"), "v_comp"),
             kWhole + "rubbish", kWhole + ";x=y", kWhole + " h_opt_center = f f ; x",
             kWhole + "h_scroll=1", kWhole + "h_corre_2_zzzz=12",
             kWhole + "h_corre_2_0040=" + std::string(64, 'A')}) {
    FileWorld world;
    EXPECT_EQ(world.Read("wlr", text), kAccepted) << text;
    EXPECT_EQ(world.display.Texts(), Texts{}) << text;
  }
  EXPECT_EQ(FileWorld().Read("wlr", Without(kWhole, "[Warp")), kFileCorrupted);
  const Texts length{kBadLength}, value{kBadValue}, both{kBadLength, kBadValue};
  // Each in one way only; what comes before the line would be accepted.
  const std::pair<std::string, Texts> refused[] = {
      {Without(kWhole, "h_stadium"), {}},
      {Without(kWhole, "v_corre_2"), {}},
      {kWhole + "h_opt_center=1F0", length},
      {kWhole + "h_opt_center=G1", value},
      {kWhole + "h_opt_center=G1F", both},
      {kWhole + "h_comp_disp=", length},
      {kWhole + "h_opt center=ff", length},
      {kWhole + "h_colour=12", length},
      {kWhole + "H_SCROLL=1", length},
      {kWhole + "h_corre_2=12", length},
      {kWhole + "_corre_2_=12", length},
      {kWhole + "x_corre_2_0000=12", length},
      {kWhole + "h_corre_2_0040=" + std::string(65, 'A'), length},
      {kWhole + "h_corre_2_0040=", length},
  };
  for (const auto& [text, messages] : refused) {
    FileWorld world;
    EXPECT_EQ(world.Read("wlr", text), kFileValueWrong) << text;
    EXPECT_EQ(world.display.Texts(), messages) << text;
  }
}

TEST(WlrFile, StoresBeforeItChecksAndAppendsPiecesInTheOrderOfTheLines) {
  FileWorld world;
  world.Read("wlr", kHeader + "v_corre_2_0040=AB\nv_corre_2_0000=CD\nv_corre_2_0000=EF\n" +
                        "h_scroll=1234\nh_scroll=56789");
  EXPECT_EQ(world.data.Registers[kVertical][kCorre2], "ABCDEF");
  EXPECT_EQ(world.data.Registers[kHorizontal][kScroll], "56789");
  for (const char* unknown : {"h_corre_2=12", "h_stadium_corre_2_0000=12", "_corre_2_=12"}) {
    FileWorld empty;
    empty.Read("wlr", kHeader + unknown);
    EXPECT_EQ(empty.global.Registers, RegisterSet()) << unknown;
  }
}

TEST(WlrFile, CutsTablesIntoPieces) {
  const std::string full(64, '7');
  const std::pair<std::size_t, std::string> rows[] = {
      {0, "h_corre_2_0000=\r\n"},
      {64, "h_corre_2_0000=" + full + "\r\n"},
      {65, "h_corre_2_0000=" + full + "\r\nh_corre_2_0040=7\r\n"},
      {320, "h_corre_2_0000=" + full + "\r\nh_corre_2_0040=" + full + "\r\nh_corre_2_0080=" + full +
                "\r\nh_corre_2_00C0=" + full + "\r\nh_corre_2_0100=" + full + "\r\n"},
  };
  for (const auto& [digits, expected] : rows) {
    FileWorld world;
    world.data.Registers[kHorizontal][kCorre2] = std::string(digits, '7');
    const std::string text = world.Written("wlr").value_or("");
    EXPECT_NE(text.find("h_corre_1=\r\n" + expected + "v_panel_ext="), std::string::npos) << digits;
  }
  FileWorld world;
  world.data.Registers[kVertical][kCorre2] = std::string(2046, '7');
  const std::string text = world.Written("wlr").value_or("");
  EXPECT_NE(text.find("v_corre_2_07C0=" + std::string(62, '7') + "\r\n"), std::string::npos);
}

}  // namespace
}  // namespace warpline
