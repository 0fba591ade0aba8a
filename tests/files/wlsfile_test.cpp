#include "tests/files/file_fixture.h"

namespace warpline {
namespace {

const std::string kVersion1 = "[Warpline Shape File]\n";
const std::string kVersion2 = "[Warpline Shape File 2.0]\n";

TEST(WlsFile, AcceptsOrRefuses) {
  const struct {
    std::string header;
    Texts accepted, refused;
  } rows[] = {
      {kVersion1, {"", "CorreDataPtsX7=5"}, {"CorreDataPtsX8=5", "CorreDataPtsX05=5"}},
      {kVersion2,
       {"", "CorreDataPtsX15=5"},
       {"CorreDataPtsX5=5", "CorreFixedH=1", "ScreenType=1", "CorreDataPtsX00=1"}},
  };
  for (const auto& row : rows) {
    for (const std::string& line : row.accepted) {
      EXPECT_EQ(FileWorld().Read("wls", row.header + line), kAccepted) << line;
    }
    for (const std::string& line : row.refused) {
      EXPECT_EQ(FileWorld().Read("wls", row.header + line), kFileValueWrong) << line;
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
  EXPECT_EQ(world.Read("wls", kVersion1 + "CorrePointNum=3\nCorreInterp=2\nCorreDataPtsX1=250000\n"
                                          "CorreDataPtsY1=900000\nCorreDataPtsX2=1000000\n"
                                          "CorreDataPtsY2=750000"),
            std::nullopt);
  EXPECT_EQ(world.data.Correction, expected);
}

TEST(WlsFile, WritesTheGoldenFile) {
  FileWorld world;
  CurveDefinition& curve = world.data.Correction.Curves[kHorizontal];
  curve = {0, 1, 16, 5, {}};
  for (std::size_t slot = 0; slot < kMaxCurvePoints; ++slot) {
    const double base = 60000.0 * static_cast<double>(slot);
    curve.CorreDataPts[slot] = {(base + 1) / 1e6, (base + 2) / 1e6};
  }
  EXPECT_EQ(world.Written("wls"), TempFolder::Read(SourceFolder() / "tests/files/golden_2_0.wls"));
}

}  // namespace
}  // namespace warpline
