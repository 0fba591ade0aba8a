#include "picture/photograph.h"
#include "fit/marks.h"
#include "picture/marks_picture.h"
#include "tests/cli/cli_run.h"
#include "tests/support/environment.h"
#include "tests/support/projector_server.h"
#include "tests/support/wall_photograph.h"

// The whole way from a photograph to a straight picture: the camera, the command line, the stand-in
// library, the simulated projector, and the camera again.

namespace warpline {
namespace {

constexpr double kTarget = 0.4;      // percent off straight, or a fifth of before
constexpr double kAgreement = 0.15;  // percent, between what is told and what is seen

class PhotographTest : public FilesTest {
 protected:
  // The marks as the projector shows them, found in a photograph.
  Marks Photographed(const WallScene& scene, const RegisterSet& shown) const {
    const RgbImage panel = PanelPicture(MarksPicture(scene.Panel), shown);
    const RgbImage photo = PhotographOf(panel, scene.Wall, scene.Seen);
    const std::string file = Put("photo.jpg", JpegOf(photo, 75).value());
    const CliResult found = RunCli({"marks", file, "-o", Name("marks.csv"), "--panel", "512x384"});
    EXPECT_EQ(found.exit_code, 0) << found;
    NamedText reason;
    return MarksOf(TempFolder::Read(Name("marks.csv")), reason).value_or(Marks());
  }

  // What the command line tells of the correction that it writes for the marks found last.
  std::string Fit(const WallScene& scene, const char* screen) const {
    Words words{"fit", Name("marks.csv"), "-o", Name("out.wlt"), "--panel", "512x384"};
    words = words + Words{"--photo", "1120x840", "--screen", screen};
    for (const PlaneLine& line : LinesThrough(scene.Seen)) {
      words.emplace_back("--straight");
      for (const PlanePoint& point : line) {
        words.push_back(std::to_string(point.X) + "," + std::to_string(point.Y));
      }
    }
    const CliResult fitted = RunCli(words);
    EXPECT_EQ(fitted.exit_code, 0) << fitted;
    return LinesOf(fitted.out).back();
  }

  OwnSettings settings_{folder_.Path()};
};

// The outermost marks of all four sides, percent of the picture's height; the lens is taken out.
double OffStraight(const Marks& marks, const WallScene& scene) {
  EXPECT_EQ(marks.size(), 63U);
  Lens lens = LensWithoutFault({scene.Seen.Photo.Width, scene.Seen.Photo.Height});
  lens.K1 = scene.Seen.K1;
  std::array<PlaneLine, 4> sides;
  for (const Mark& mark : marks) {
    const PlanePoint place = lens.PlaceOf({mark.X, mark.Y});
    if (mark.U == MarkU(0)) sides[0].push_back(place);
    if (mark.V == MarkV(0)) sides[1].push_back(place);
    if (mark.U == MarkU(kMarkColumns - 1)) sides[2].push_back(place);
    if (mark.V == MarkV(kMarkRows - 1)) sides[3].push_back(place);
  }
  const std::size_t middle = kMarkColumns / 2;
  const double height = DistanceOf(sides[1].at(middle), sides[3].at(middle));
  double off = 0;
  for (const PlaneLine& side : sides) off = std::max(off, 100 * OffLine(side) / height);
  return off;
}

double NumberBehind(const std::string& text, const std::string& word) {
  return std::stod(text.substr(text.find(word) + word.size()));
}

TEST_F(PhotographTest, MakesThePictureOnEachWallAsStraightAsItIsTold) {
  const std::pair<const char*, const char*> cases[] = {
      {"flat:4:0:bottom", "0"},      {"cylinder:4:-0.25:bottom", "0"},
      {"bow:4:0.25:middle", "1"},    {"sphere:4:-0.25:middle", "any"},
      {"corner:4:0.25:bottom", "3"}, {"ceiling:4:-0.25:middle", "4"},
  };
  for (const auto& [wall, screen] : cases) {
    SCOPED_TRACE(wall);
    WallScene scene{*WallOf(wall), {512, 384}, {.X = 1.5, .K1 = 0.01, .Photo = {1120, 840}}};
    scene.Seen.Y = scene.Middle() + 0.3;
    sim::StationSetup setup;
    setup.Projector.Panel = scene.Panel;
    const ProjectorServer projector(setup);
    const double before = OffStraight(Photographed(scene, projector.Snapshot().Working), scene);
    const std::string told = Fit(scene, screen);
    const CliResult applied = RunCli({"apply", Name("out.wlt"), "--lan", projector.Place()});
    ASSERT_EQ(applied.exit_code, 0) << applied;
    const double after = OffStraight(Photographed(scene, projector.Snapshot().Working), scene);
    EXPECT_LE(after, std::max(kTarget, before / 5)) << told;
    EXPECT_NEAR(before, NumberBehind(told, "edges "), kAgreement) << told;
    EXPECT_NEAR(after, NumberBehind(told, "-> "), kAgreement) << told;
  }
}

}  // namespace
}  // namespace warpline
