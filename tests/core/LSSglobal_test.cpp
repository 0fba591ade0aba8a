#include "core/LSSglobal.h"

#include <gtest/gtest.h>

#include <array>

#include "core/catalogue.h"

namespace warpline {
namespace {

TEST(Language, OfSystemAndCommandLine) {
  struct Row {
    const char* name;
    bool japanese_system;
    const char* command_line;
    int language;
  };
  const std::array<Row, 16> rows{{
      {"Japanese system", true, "", 1},
      {"other system", false, "", 0},
      {"English asked for", true, "/E", 0},
      {"Japanese asked for", false, "-J", 1},
      {"small letter", false, "-j", 1},
      {"slash and small letter", false, "/j", 1},
      {"no switch", false, "J", 0},
      {"no switch keeps Japanese", true, "E file.wlt", 1},
      {"last one wins: English", false, "/J /E", 0},
      {"last one wins: Japanese", true, "-X -J", 1},
      {"any other switch is English", true, "-X", 0},
      {"longer word is not J", true, "/JA", 0},
      {"bare dash", true, "-", 0},
      {"tabs and runs of blanks", false, " \t /J\t\tfile.wlt  ", 1},
      {"two dashes", true, "--J", 0},
      {"switch inside a word", true, "a/E", 1},
  }};
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(DecideLanguage(row.japanese_system, row.command_line), row.language);
  }
}

TEST(Language, OneAloneIsJapanese) {
  struct Row {
    std::int16_t language;
    std::int32_t english_mode;
    const char* ok_to_save;
  };
  const std::array<Row, 4> rows{{
      {1, 0, "変更を保存しますか？"},
      {0, 1, "Do you want to save the change?"},
      {2, 1, "Do you want to save the change?"},
      {-1, 1, "Do you want to save the change?"},
  }};
  for (const Row& row : rows) {
    SCOPED_TRACE(row.language);
    LSSglobal global;
    ApplyLanguage(global, row.language);
    EXPECT_EQ(global.Language, row.language);
    EXPECT_EQ(global.EnglishMode, row.english_mode);
    EXPECT_EQ(TextOf(global, 199), row.ok_to_save);
  }
}

LSSglobal Used() {
  LSSglobal global;
  ApplyLanguage(global, 1);
  global.Settings.ComPort = 4;
  global.CurrentFile = "wall.wlt";
  global.Correction.ScreenType = kOtherScreens;
  global.Correction.Projection = {1, 1};
  for (const Axis axis : {kHorizontal, kVertical}) {
    global.Correction.Axes[axis] = {50, 10, -7, 8, 900, 1};
    global.SecondCopy[axis] = {1, 2, 3, 4, 5, 1};
    CurveDefinition& curve = global.Correction.Curves[axis];
    curve.CorreFixed = 0;
    curve.CorreSymmetry = 1;
    curve.CorrePointNum = kMaxCurvePoints;
    curve.CorreInterp = kBSpline;
    curve.CorreDataPts.fill({0.3, 0.9});
  }
  return global;
}

TEST(ResetModel, GivesTheStartStateWhateverWasBefore) {
  LSSglobal global = Used();
  ResetModel(global);

  EXPECT_EQ(global.Correction.ScreenType, 0);
  EXPECT_EQ(global.Correction.Projection, (std::array<std::int16_t, 2>{0, 0}));
  const AxisParameters reset{0, -32, 0, 0, 0, 0};
  for (const Axis axis : {kHorizontal, kVertical}) {
    EXPECT_EQ(global.Correction.Axes[axis], reset);
    EXPECT_EQ(global.SecondCopy[axis], reset);
  }
  const CurveDefinition diagonal{1, 0, 2, kStraightLine, {{{0.0, 0.75}, {1.0, 1.0}}}};
  const CurveDefinition arch{1, 0, 3, kQuadratic, {{{0.0, 0.8}, {0.5, 1.0}, {1.0, 0.8}}}};
  EXPECT_EQ(global.Correction.Curves[kHorizontal], diagonal);
  EXPECT_EQ(global.Correction.Curves[kVertical], arch);
}

TEST(ResetModel, LeavesTheRestAlone) {
  LSSglobal global = Used();
  ResetModel(global);
  EXPECT_EQ(global.Language, 1);
  EXPECT_EQ(global.MessageOffset, 0);
  EXPECT_EQ(global.Settings.ComPort, 4);
  EXPECT_EQ(global.CurrentFile, "wall.wlt");
}

TEST(ScreenTypeReset, SeedsTheShapesOfTheType) {
  struct Row {
    const char* name;
    std::int16_t screen_type;
    CurveShape horizontal;
    CurveShape vertical;
  };
  const std::array<Row, 6> rows{{
      {"cylinder", 0, kDiagonalLine, kArch},
      {"bowed cylinder", 1, kArch, kDiagonalLine},
      {"sphere", 2, kArch, kArch},
      {"corner", 3, kDiagonalLine, kTriangle},
      {"ceiling and wall", 4, kTriangle, kDiagonalLine},
      {"other", 5, kDiagonalLine, kDiagonalLine},
  }};
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    CorrectionData correction = Used().Correction;
    correction.ScreenType = row.screen_type;
    correction.Projection = {0, 1};
    ResetToScreenType(correction);
    CurveDefinition horizontal;
    CurveDefinition vertical;
    ResetCurveDefinition(horizontal, row.horizontal);
    ResetCurveDefinition(vertical, row.vertical);
    EXPECT_EQ(correction.Curves[kHorizontal], horizontal);
    EXPECT_EQ(correction.Curves[kVertical], vertical);
    EXPECT_EQ(correction.Axes[kHorizontal].Optical, -32);
    EXPECT_EQ(correction.Axes[kVertical].Optical, 32) << "projected from the ceiling";
  }
}

TEST(CurveReset, TriangleAndUnknownShape) {
  const CurveDefinition triangle{1, 0, 3, kStraightLine, {{{0.0, 0.75}, {0.5, 1.0}, {1.0, 0.75}}}};
  CurveDefinition curve = Used().Correction.Curves[kHorizontal];
  ResetCurveDefinition(curve, kTriangle);
  EXPECT_EQ(curve, triangle);

  ResetCurveDefinition(curve, 3);
  const CurveDefinition cleared{1, 0, 3, kStraightLine, {}};
  EXPECT_EQ(curve, cleared) << "count and type stay, the points go";
}

TEST(DataFolder, LiesBelowTheMakersFolder) {
  const std::filesystem::path folder = DataFolder("appdata");
  EXPECT_EQ(folder.filename(), "Warpline Tool 3.0");
  EXPECT_EQ(folder.parent_path().filename(), "Varnok Beamkit");
  EXPECT_EQ(folder.parent_path().parent_path(), "appdata");
}

}  // namespace
}  // namespace warpline
