#include "core/LSSglobal.h"

#include <gtest/gtest.h>

#include "core/catalogue.h"

namespace warpline {
namespace {

TEST(Language, OfSystemAndCommandLine) {
  const struct {
    bool japanese_system;
    int language;
    std::vector<const char*> command_lines;
  } rows[] = {
      {true, 1, {"", "E file.wlt", "a/E", "-X -J"}},  // the last switch wins
      {true, 0, {"/E", "-X", "/JA", "-", "--J"}},     // any other switch is English
      {false, 1, {"-J", "-j", "/j", " \t /J\t\tfile.wlt  "}},
      {false, 0, {"", "J", "/J /E"}},
  };
  for (const auto& row : rows) {
    for (const char* line : row.command_lines) {
      EXPECT_EQ(DecideLanguage(row.japanese_system, line), row.language)
          << line << (row.japanese_system ? ", Japanese system" : ", other system");
    }
  }
}

TEST(Language, OneAloneIsJapanese) {
  for (const auto language : std::to_array<std::int16_t>({1, 0, 2, -1})) {
    SCOPED_TRACE(language);
    LSSglobal global;
    ApplyLanguage(global, language);
    EXPECT_EQ(global.Language, language);
    EXPECT_EQ(global.EnglishMode, language == 1 ? 0 : 1);
    EXPECT_EQ(TextOf(global, 199),
              language == 1 ? "変更を保存しますか？" : "Do you want to save the change?");
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
    global.Correction.Curves[axis] = {0, 1, kMaxCurvePoints, kBSpline, {}};
    global.Correction.Curves[axis].CorreDataPts.fill({0.3, 0.9});
  }
  return global;
}

TEST(ResetModel, GivesTheStartStateOfTheModelAlone) {
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

  EXPECT_EQ(global.Language, 1) << "the rest stays";
  EXPECT_EQ(global.MessageOffset, 0);
  EXPECT_EQ(global.Settings.ComPort, 4);
  EXPECT_EQ(global.CurrentFile, "wall.wlt");
}

TEST(ScreenTypeReset, SeedsTheShapesOfTheType) {
  const std::array<CurveShape, kAxisCount> shapes[] = {
      {kDiagonalLine, kArch},     {kArch, kDiagonalLine},     {kArch, kArch},
      {kDiagonalLine, kTriangle}, {kTriangle, kDiagonalLine}, {kDiagonalLine, kDiagonalLine},
  };
  CorrectionData correction = Used().Correction;
  correction.Projection = {0, 1};
  for (correction.ScreenType = 0; correction.ScreenType < 6; ++correction.ScreenType) {
    ResetToScreenType(correction);
    for (const Axis axis : {kHorizontal, kVertical}) {
      CurveDefinition seeded;
      ResetCurveDefinition(seeded, shapes[correction.ScreenType][axis]);
      EXPECT_EQ(correction.Curves[axis], seeded) << correction.ScreenType << ", " << axis;
    }
  }
  EXPECT_EQ(correction.Axes[kHorizontal].Optical, -32);
  EXPECT_EQ(correction.Axes[kVertical].Optical, 32) << "projected from the ceiling";
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

}  // namespace
}  // namespace warpline
