#include "core/fault.h"
#include "tests/files/file_fixture.h"

namespace warpline {
namespace {

const std::string kVersion1 = "[Warpline Shape File]\n";
const std::string kVersion2 = "[Warpline Shape File 2.0]\n";

TEST(WlsFile, AcceptsOrRefuses) {
  const std::optional<FileErrorCode> accepted;
  const struct {
    const char* name;
    std::string text;
    std::optional<FileErrorCode> expected;
  } rows[] = {
      {"version 1 header", kVersion1, accepted},
      {"version 2 header", kVersion2, accepted},
      {"header of a data file", "[Warpline Tool Data File 3.0]\n", kFileCorrupted},
      {"version 1, one-digit slot", kVersion1 + "CorreDataPtsX7=5", accepted},
      {"version 1, slot 8", kVersion1 + "CorreDataPtsX8=5", kFileValueWrong},
      {"version 1, two-digit slot", kVersion1 + "CorreDataPtsX05=5", kFileValueWrong},
      {"version 2, one-digit slot", kVersion2 + "CorreDataPtsX5=5", kFileValueWrong},
      {"version 2, two-digit slot", kVersion2 + "CorreDataPtsX15=5", accepted},
      {"axis letter", kVersion2 + "CorreFixedH=1", kFileValueWrong},
      {"key of a data file", kVersion2 + "ScreenType=1", kFileValueWrong},
      {"flag above", kVersion2 + "CorreSymmetry=2", kFileValueWrong},
      {"point count above", kVersion2 + "CorrePointNum=17", kFileValueWrong},
      {"first X not 0", kVersion2 + "CorreDataPtsX00=1", kFileValueWrong},
      {"used Y too low", kVersion2 + "CorreDataPtsY01=749999", kFileValueWrong},
      {"unused Y too low", kVersion2 + "CorreDataPtsY02=749999", accepted},
  };
  for (const auto& row : rows) {
    FileWorld world;
    EXPECT_EQ(world.Read("wls", row.text), row.expected) << row.name;
  }
}

TEST(WlsFile, ReadsIntoTheHorizontalStagingCurveAlone) {
  FileWorld world;
  world.file.Staging().Axes[kHorizontal].Optical = 100;  // no matter for a shape
  CorrectionData expected = world.file.Staging();
  expected.Curves[kHorizontal].CorrePointNum = 3;
  expected.Curves[kHorizontal].CorreInterp = kQuadratic;
  expected.Curves[kHorizontal].CorreDataPts[1] = {0.25, 0.9};
  expected.Curves[kHorizontal].CorreDataPts[2] = {1.0, 0.75};
  EXPECT_EQ(world.Read("wls", kVersion1 + "CorrePointNum=3\nCorreInterp=2\nCorreDataPtsX1=250000\n"
                                          "CorreDataPtsY1=900000\nCorreDataPtsX2=1000000\n"
                                          "CorreDataPtsY2=750000"),
            std::nullopt);
  EXPECT_EQ(world.file.Staging(), expected);
}

TEST(WlsFile, DigitsBeyond32BitsAreFaults) {
  EXPECT_THROW(FileWorld().Read("wls", kVersion2 + "CorreFixed=2147483648"), Fault);
  EXPECT_EQ(FileWorld().Read("wls", kVersion2 + "CorreFixed=2147483647"), kFileValueWrong);
}

TEST(WlsFile, WritesTheGoldenFile) {
  FileWorld world;
  CurveDefinition& curve = world.file.Staging().Curves[kHorizontal];
  curve = {0, 1, 16, 5, {}};
  for (std::size_t slot = 0; slot < kMaxCurvePoints; ++slot) {
    const double base = 60000.0 * static_cast<double>(slot);
    curve.CorreDataPts[slot] = {(base + 1) / 1e6, (base + 2) / 1e6};
  }
  EXPECT_EQ(world.Written("wls"), TempFolder::Read(kSourceFolder / "tests/files/golden_2_0.wls"));
}

}  // namespace
}  // namespace warpline
