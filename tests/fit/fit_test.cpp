#include "fit/fit.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include "fit/preparation.h"
#include "fit/search.h"
#include "tests/support/said.h"
#include "tests/support/wall_photograph.h"

namespace warpline {
namespace {

// Photographed from the side, a little below the picture's middle.
WallScene SceneOf(const std::string& wall, double k1 = 0) {
  WallScene scene{*WallOf(wall), {1024, 768}, {}};
  scene.Seen.X = 1.5;
  scene.Seen.Y = scene.Middle() + 0.3;
  scene.Seen.K1 = k1;
  scene.Seen.Photo = {4000, 3000};
  return scene;
}

FitInput InputOf(const WallScene& scene, std::optional<std::int16_t> screen_type = {}) {
  FitInput input;
  input.Seen = MarksOn(scene, 9, 7);
  input.Panel = scene.Panel;
  input.Photo = PhotoSize{4000, 3000};
  input.ScreenType = screen_type;
  return input;
}

FitReport Fitted(const FitInput& input) {
  NamedText reason;
  const auto report = FitCorrection(input, reason);
  EXPECT_TRUE(report) << SaidByTool(reason);
  for (const NamedText& warning : report->Warnings) SaidByTool(warning);
  return *report;
}

const FitResult& Best(const FitReport& report) {
  return report.Results[report.Chosen];
}

bool Holds(const std::vector<NamedText>& texts, std::string_view name) {
  return std::ranges::count(texts, name, &NamedText::Name) > 0;
}

TEST(Fit, MakesEachWallStraightAndTellsWhatItsRegistersShow) {
  const struct {
    const char* Wall;
    std::optional<std::int16_t> ScreenType;
    double Before;  // more than that
    double After;   // at most
  } kRows[] = {
      {"cylinder:4:-0.25:bottom", kCylindricalScreen, 1.5, 0.05},
      {"bow:4:-0.25:middle", kVerticalBowScreen, 0.8, 0.05},
      {"sphere:4:0.25:middle", kSphericalScreen, 1, 0.1},
      {"corner:4:0.25:bottom", kCornerWallScreen, 2, 0.1},
      {"ceiling:4:-0.25:middle", kCornerCeilingScreen, 1, 0.1},
      {"sphere:4:-0.25:bottom", kOtherScreens, 1.5, 0.05},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.Wall);
    const WallScene scene = SceneOf(row.Wall);
    FitInput input = InputOf(scene, row.ScreenType);
    input.StraightLines = LinesThrough(scene.Seen);
    const FitReport report = Fitted(input);
    CorrectionData none;
    ResetToScreenType(none);
    EXPECT_GT(PictureOn(scene, none).OffStraight, row.Before);
    const SeenPicture seen = PictureOn(scene, Best(report).Correction);
    EXPECT_LE(seen.OffStraight, row.After);
    EXPECT_NEAR(seen.OffStraight, Best(report).After.Edges, 0.03);
    EXPECT_LE(seen.Outside, 0.5);
    EXPECT_GE(Best(report).Area, 0.95);
    EXPECT_EQ(Best(report).Correction.ScreenType, row.ScreenType);
    EXPECT_EQ(Best(report).Note.Name, "");
  }
}

TEST(Fit, HoldsItsWordWhereTheWallIsSeenFromFarAside) {
  const std::pair<const char*, Camera> cases[] = {
      {"cylinder:5.5:-0.24:top", {.X = 3.9, .Y = 1.3, .Z = 1.5}},
      {"sphere:5.5:0.17:bottom", {.X = 3.4, .Y = -2.6, .Z = -2, .Filled = 0.36}},
      {"sphere:4:0.25:middle", {.X = -3, .Y = 0.5, .Z = -1}},
  };
  for (const auto& [wall, camera] : cases) {
    SCOPED_TRACE(wall);
    WallScene scene{*WallOf(wall), {1024, 768}, camera};
    scene.Seen.Photo = {4000, 3000};
    FitInput input = InputOf(scene);
    input.StraightLines = LinesThrough(scene.Seen);
    const FitReport report = Fitted(input);
    EXPECT_FALSE(report.Worst.at(0).Dropped);
    const double seen = PictureOn(scene, Best(report).Correction, UprightOf(scene)).OffStraight;
    EXPECT_NEAR(seen, Best(report).After.Edges, std::max(0.1, report.MarksBound));
  }
}

// Where a corner of such a picture lands is nowhere near the panel; its size is no gain.
TEST(Fit, TakesNoPictureThatIsTornApart) {
  NamedText reason;
  const FitTask task = PrepareFit(InputOf(SceneOf("sphere:4:0.25:middle")), reason).value().Task;
  CorrectionData torn;
  torn.ScreenType = kSphericalScreen;
  ResetToScreenType(torn);
  const double none = JudgeCorrection(task, torn).Score;
  torn.Projection = {1, 0};
  torn.Axes[kHorizontal] = {.Distortion = -150, .Optical = 64, .Position = -20000};
  torn.Axes[kVertical] = {.Distortion = -150, .Optical = -64, .Position = 20000};
  EXPECT_GT(JudgeCorrection(task, torn).Score, none);
}

TEST(Fit, LeavesAFlatWallAloneWhateverItsMarksAndItsLensSay) {
  for (const double k1 : {-0.02, 0.0, 0.02}) {
    const WallScene scene = SceneOf("flat:4:0:bottom", k1);
    FitInput input = InputOf(scene, kCylindricalScreen);
    input.Seen = MarksOn(scene, 9, 7, 0.5);
    const FitReport report = Fitted(input);
    EXPECT_EQ(Best(report).Correction.Axes, CorrectionData().Axes) << k1;
    EXPECT_EQ(Best(report).Note.Name, "FitStraightAlready");
    EXPECT_LT(Best(report).Before.Edges, report.LensBound + 0.05);
  }
}

TEST(Fit, FindsTheLensFromLinesAndBoundsItWithout) {
  for (const double k1 : {-0.02, 0.02}) {
    const WallScene scene = SceneOf("cylinder:4:0.25:middle", k1);
    FitInput input = InputOf(scene, kCylindricalScreen);
    const FitReport unknown = Fitted(input);
    EXPECT_FALSE(unknown.LensTerm);
    EXPECT_TRUE(Holds(unknown.Warnings, "FitLensUnknown"));
    const double seen = PictureOn(scene, Best(unknown).Correction).OffStraight;
    EXPECT_LE(std::abs(seen - Best(unknown).After.Edges), unknown.LensBound);
    EXPECT_LT(unknown.LensBound, 0.3);
    input.StraightLines = LinesThrough(scene.Seen);
    const FitReport known = Fitted(input);
    EXPECT_NEAR(known.LensTerm.value(), k1, 1e-4);
    EXPECT_LE(PictureOn(scene, Best(known).Correction).OffStraight, 0.1);
    input.StraightLines = {{{500, 1500}, {2000, 1500}, {3500, 1500}}};
    EXPECT_TRUE(Holds(Fitted(input).Warnings, "FitLinesTellNothing"));
  }
}

TEST(Fit, DropsAStrayMarkAndDoesWithoutSome) {
  const WallScene scene = SceneOf("sphere:4:-0.25:middle");
  for (const std::size_t stray : {std::size_t{0}, std::size_t{31}}) {
    FitInput input = InputOf(scene, kSphericalScreen);
    input.Seen[stray].X += 25;
    for (const int missing : {62, 40, 33, 12, 8, 5}) input.Seen.erase(input.Seen.begin() + missing);
    const FitReport report = Fitted(input);
    const MarkMisfit& worst = report.Worst.at(0);
    EXPECT_TRUE(worst.Dropped && Holds(report.Warnings, "FitMarkDropped")) << stray;
    EXPECT_EQ(input.Seen[worst.Index].X, MarksOn(scene, 9, 7)[stray].X + 25);
    EXPECT_NEAR(worst.Pixels, 25, 2);
    EXPECT_FALSE(report.Worst.at(1).Dropped);
    EXPECT_LE(PictureOn(scene, Best(report).Correction).OffStraight, 0.15);
  }
}

TEST(Fit, FillsTheWantedCornersWithTheOrientationThatIsSet) {
  const WallScene scene = SceneOf("cylinder:4:-0.25:middle");
  FitInput input = InputOf(scene, kOtherScreens);
  input.StraightLines = LinesThrough(scene.Seen);
  NamedText reason;
  const PhotoCorners largest = LargestRectangle(input, reason).value();
  input.Corners = largest;
  for (PlanePoint& corner : *input.Corners) {
    corner = {2000 + 0.9 * (corner.X - 2000), 1500 + 0.9 * (corner.Y - 1500)};
  }
  input.Projection = {std::int16_t{1}, std::int16_t{1}};
  const FitReport report = Fitted(input);
  EXPECT_LE(Best(report).After.Place, 0.4);
  EXPECT_EQ(Best(report).Correction.Projection[kVertical], 1);
  EXPECT_GE(Best(report).Correction.Axes[kVertical].Optical, -16);
  for (const std::size_t edge : {0, 2}) {
    const PlanePoint begin = Best(report).Edges[edge].front();
    EXPECT_LT(DistanceOf(begin, (*input.Corners)[edge == 0 ? 0 : 1]), 12);
  }
  input.Corners = largest;
  for (PlanePoint& corner : *input.Corners) corner.X = 2000 + 1.2 * (corner.X - 2000);
  EXPECT_TRUE(Holds(Fitted(input).Warnings, "FitCornersOutside"));
}

TEST(Fit, SaysWhatTheProjectorCannotDo) {
  WallScene scene = SceneOf("cylinder:4:-0.4:bottom");
  FitInput input = InputOf(scene, kCylindricalScreen);
  input.Projection[kVertical] = 1;
  EXPECT_EQ(Best(Fitted(input)).Note.Name, "FitOrientationLimits");
  scene = SceneOf("cylinder:4:-0.25:bottom");
  input.Projection = {};
  scene.Seen.Y = scene.Middle() - 2;
  input.Seen = MarksOn(scene, 9, 7);
  EXPECT_TRUE(SaidByTool(Best(Fitted(input)).Note).starts_with("Both edges bend the same way"));
  input.ScreenType = kVerticalBowScreen;
  EXPECT_LE(Best(Fitted(input)).After.Edges, Best(Fitted(input)).Before.Edges);
}

TEST(Fit, SaysThatTheMarksTellTooLittleRatherThanWhatTheProjectorCannotDo) {
  const WallScene scene = SceneOf("cylinder:4:-0.2:bottom");
  FitInput input = InputOf(scene, kVerticalBowScreen);
  input.StraightLines = LinesThrough(scene.Seen);
  input.Seen = MarksOn(scene, 9, 7, 8);
  const FitResult best = Best(Fitted(input));
  EXPECT_EQ(best.After.Edges, best.Before.Edges);
  EXPECT_EQ(best.Note.Name, "FitMarksMayBeAll") << SaidByTool(best.Note);
}

TEST(Fit, RefusesMarksThatCannotBeRight) {
  const struct {
    const char* Reason;
    std::function<void(FitInput&)> Spoil;
  } kRows[] = {
      {"FitMarksMirrored",
       [](FitInput& in) {
         for (Mark& mark : in.Seen) mark.X = 4000 - mark.X;
       }},
      {"FitMarksCrossed",
       [](FitInput& in) {
         std::swap(in.Seen[20].X, in.Seen[21].X);
         std::swap(in.Seen[20].Y, in.Seen[21].Y);
       }},
      {"FitMarksCrossed",
       [](FitInput& in) {
         for (std::size_t i = 0; i < 9; ++i) std::swap(in.Seen[i].Y, in.Seen[i + 27].Y);
       }},
      {"FitMarksCrossed",
       [](FitInput& in) {
         for (Mark& mark : in.Seen) mark.Y = mark.X;
       }},
      {"FitTooFewMarks",
       [](FitInput& in) { std::erase_if(in.Seen, [](const Mark& m) { return m.V > 0.6; }); }},
      {"FitTooFewMarks", [](FitInput& in) { in.Seen.clear(); }},
      {"FitMarksMissing",
       [](FitInput& in) { in.Seen.erase(in.Seen.begin() + 20, in.Seen.begin() + 27); }},
      {"FitUnevenGrid", [](FitInput& in) { in.Seen[5].U += 0.05; }},
      {"FitUnevenGrid", [](FitInput& in) { in.Seen.push_back(in.Seen[5]); }},
      {"FitGridInside",
       [](FitInput& in) { std::erase_if(in.Seen, [](const Mark& m) { return m.U > 0.95; }); }},
      {"FitMarksOutside",
       [](FitInput& in) {
         in.Photo = PhotoSize{2000, 1500};
       }},
      {"FitCornersWrong",
       [](FitInput& in) {
         in.Corners = PhotoCorners{{{1200, 900}, {2800, 2100}, {2800, 900}, {1200, 2100}}};
       }},
  };
  for (const auto& row : kRows) {
    FitInput input = InputOf(SceneOf("cylinder:4:-0.25:middle"), kCylindricalScreen);
    row.Spoil(input);
    NamedText reason;
    EXPECT_FALSE(FitCorrection(input, reason)) << row.Reason;
    EXPECT_EQ(reason.Name, row.Reason);
    SaidByTool(reason);
  }
}

}  // namespace
}  // namespace warpline
