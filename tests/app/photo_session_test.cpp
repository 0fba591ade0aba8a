#include "app/photo_session.h"

#include <algorithm>

#include "app/photo_texts.h"
#include "picture/marks_picture.h"
#include "picture/photograph.h"
#include "tests/app/controller_rig.h"
#include "tests/support/wall_photograph.h"

// From a photograph of marks to a correction, by hand where it has to be.

namespace warpline {
namespace {

struct PhotoRig : ControllerRig {
  PhotoRig() { global.Panel = scene.Panel; }

  RgbImage Photograph(const RgbImage& picture) const {
    return PhotographOf(picture, scene.Wall, scene.Seen);
  }
  RgbImage Photograph() const { return Photograph(MarksPicture(scene.Panel)); }

  PlanePoint PlaceOf(std::size_t mark) const {
    const double u = MarkU(static_cast<int>(mark % kMarkColumns));
    const double v = MarkV(static_cast<int>(mark / kMarkColumns));
    const auto at = CameraView::Of(scene.Wall, scene.Panel, scene.Seen)
                        ->PhotoPosition(u * scene.Panel.Width, v * scene.Panel.Height)
                        .value();
    return {at[0], at[1]};
  }
  const PhotoMark& MarkAt(std::size_t mark) const { return session.Layout().Marks.All()[mark]; }
  std::size_t Counting() const { return session.Layout().Marks.Counting().size(); }
  bool Says(const std::string& words) const {
    return TextOfPhoto(global, session).find(words) != std::string::npos;
  }
  void Put(PhotoHandle handle, PlanePoint at) {
    session.Select(handle);
    session.MoveTo(at);
  }

  WallScene scene{
      *WallOf("cylinder:4:-0.25:bottom"), {640, 480}, {.X = 0.5, .Photo = {1400, 1050}}};
  PhotoSession session{engine, controller};
};

TEST(PhotoSession, MakesOneStepOfAPhotograph) {
  PhotoRig rig;
  rig.global.Settings.AutoApply = 1;
  const CorrectionData before = rig.global.Correction;
  EXPECT_FALSE(rig.session.TakeOver());
  ASSERT_TRUE(rig.session.Open(JpegOf(rig.Photograph(), 75).value()));
  EXPECT_EQ(rig.Counting(), 63u);
  ASSERT_TRUE(rig.session.TakeOver());
  const FitResult* chosen = rig.session.Chosen();
  EXPECT_EQ(chosen->ScreenType, kCylindricalScreen);
  EXPECT_LT(chosen->After.Edges, chosen->Before.Edges / 5);
  EXPECT_EQ(rig.global.Correction, chosen->Correction);
  EXPECT_EQ(rig.controller.UndoName(), "Photograph");
  rig.ExpectApplied(true);
  rig.controller.Undo();
  EXPECT_EQ(rig.global.Correction, before);
  EXPECT_EQ(rig.controller.UndoName(), "");

  rig.session.Choose(kOtherScreens);
  EXPECT_TRUE(rig.session.NeedsFit()) << "the projector has told another panel";
  ASSERT_TRUE(rig.session.TakeOver());
  EXPECT_EQ(rig.global.Correction.ScreenType, kOtherScreens);
  EXPECT_EQ(ResultRows(rig.global, rig.session).size(), 6u);
}

TEST(PhotoSession, ClearsTheProjectorAlone) {
  PhotoRig rig;
  rig.H().Distortion = 7;
  EXPECT_TRUE(rig.session.Clear());
  EXPECT_EQ(rig.Frames(), kInitializeFrames);
  EXPECT_EQ(rig.H().Distortion, 7);
  PhotoRig without;
  without.library_there = false;
  EXPECT_FALSE(without.session.Clear());
  without.global.Settings.DemoMode = 1;
  EXPECT_TRUE(without.session.Clear());
}

TEST(PhotoSession, TellsWhatIsWrongAndKeepsWhatThereIs) {
  PhotoRig rig;
  EXPECT_FALSE(rig.session.Open("no picture"));
  EXPECT_TRUE(rig.Says("no photograph that can be read"));
  ASSERT_TRUE(rig.session.Take(rig.Photograph()));
  EXPECT_EQ(rig.session.Refused(), "");
  EXPECT_FALSE(rig.session.OpenFile(rig.temp / "missing.jpg"));
  EXPECT_TRUE(rig.Says("missing.jpg"));
  EXPECT_FALSE(rig.session.Take(BlackImage({100, 400})));
  EXPECT_TRUE(rig.Says("has 100x400 pixels"));
  EXPECT_EQ(rig.Counting(), 63u);
  ASSERT_TRUE(rig.session.Take(BlackImage({400, 400})));
  EXPECT_TRUE(rig.Says("too dark"));
  EXPECT_EQ(rig.Counting(), 0u);
  EXPECT_FALSE(rig.session.TakeOver());
  EXPECT_NE(TextOfResult(rig.global, rig.session).find("Too few marks"), std::string::npos);
}

// Without their dots nobody knows which corner is which.
TEST(PhotoSession, FindsMarksByTheFourAtTheCorners) {
  PhotoRig rig;
  RgbImage picture = MarksPicture(rig.scene.Panel);
  const std::uint8_t ground = *picture.At(320, 35);
  for (std::uint8_t& light : picture.Pixels) {
    const auto pixel = (&light - picture.Pixels.data()) / 3;
    const bool side = std::abs(pixel % 640 - 320) > 245 && std::abs(pixel % 640 - 320) < 290;
    const bool end = std::abs(pixel / 640 - 240) > 167 && std::abs(pixel / 640 - 240) < 215;
    if (side && end) light = ground;
  }
  ASSERT_TRUE(rig.session.Take(rig.Photograph(picture)));
  EXPECT_EQ(rig.Counting(), 0u);
  EXPECT_TRUE(rig.Says("press \"Find Near\""));
  for (const std::size_t corner : {0, 8, 62, 54}) {
    rig.Put({PhotoHandleKind::kMark, corner}, rig.PlaceOf(corner));
  }
  EXPECT_EQ(rig.Counting(), 4u);
  EXPECT_LT(DistanceOf(rig.MarkAt(31).At, rig.PlaceOf(31)), 60) << "it has followed";
  rig.session.FindMarksNear();
  EXPECT_EQ(rig.Counting(), 63u);
  for (std::size_t i = 0; i < 63; ++i) {
    EXPECT_LT(DistanceOf(rig.MarkAt(i).At, rig.PlaceOf(i)), 0.3) << i;
  }
  EXPECT_TRUE(rig.session.TakeOver());
}

TEST(PhotoSession, HandlesMoveAndComeBack) {
  PhotoRig rig;
  ASSERT_TRUE(rig.session.Take(rig.Photograph()));
  rig.session.Fit();
  const double after = rig.session.Chosen()->After.Edges;
  ASSERT_TRUE(rig.session.SelectNext(true));
  const PlanePoint first = rig.MarkAt(0).At;
  rig.session.MoveBy(1, -10);
  EXPECT_EQ(rig.MarkAt(0).At, (PlanePoint{first.X + 0.25, first.Y - 2.5}));
  EXPECT_EQ(TextOfHandle(rig.global, rig.session).substr(0, 36),
            "Mark in column 1, row 1, set by hand");
  rig.session.Grab();
  rig.Put({PhotoHandleKind::kMark, 40}, {-5, 2000});
  EXPECT_EQ(rig.MarkAt(40).At, (PlanePoint{0, 1050}));
  rig.session.Fit();
  EXPECT_NE(TextOfResult(rig.global, rig.session).find("column 5, row 5"), std::string::npos);
  rig.session.LetGo(false);
  EXPECT_EQ(rig.session.HandleNear(rig.MarkAt(40).At, 1),
            (PhotoHandle{PhotoHandleKind::kMark, 40}));
  rig.session.Remove();
  EXPECT_EQ(rig.Counting(), 62u);

  // A corner stays where it was put; the others are then those of the fit. Turning takes all along.
  PlanePoint corner = rig.session.Report()->Corners[1];
  corner.X -= 1;
  rig.Put({PhotoHandleKind::kCorner, 1}, corner);
  ASSERT_TRUE(rig.session.Layout().Corners);
  rig.session.Turn(true);
  EXPECT_NEAR(rig.session.Layout().Corners->at(1).X, 1050 - corner.Y, 1e-9);
  EXPECT_EQ(rig.session.Size(), (PhotoSize{1050, 1400}));
  rig.session.Fit();
  EXPECT_NEAR(rig.session.Chosen()->After.Edges, after, 0.1);
  rig.session.SelectNextKind();
  EXPECT_EQ(rig.session.Selected()->Handle, PhotoHandle{}) << "beyond the corners";
  EXPECT_FALSE(rig.session.SelectNext(false));
}

TEST(PhotoSession, LinesTellTheLens) {
  PhotoRig rig;
  rig.scene.Seen.K1 = 0.02;
  ASSERT_TRUE(rig.session.Take(rig.Photograph()));
  rig.session.Fit();
  EXPECT_NE(TextOfResult(rig.global, rig.session).find("lens is unknown"), std::string::npos);
  for (const PlaneLine& line : LinesThrough(rig.scene.Seen)) {
    for (const PlanePoint& point : line) rig.session.AddPoint(point);
    EXPECT_FALSE(rig.session.NeedsFit()) << "while it is drawn";
    rig.session.EndLine();
  }
  rig.session.AddPoint();
  rig.session.AddPoint();
  rig.session.EndLine();
  EXPECT_EQ(rig.session.Layout().Lines.size(), 3u) << "two points are no line";
  rig.session.Fit();
  EXPECT_NEAR(rig.session.Report()->LensTerm.value(), 0.02, 0.002);
  rig.session.Select({{PhotoHandleKind::kLinePoint, 4, 2}});
  for (int i = 0; i < 5; ++i) rig.session.Remove();
  EXPECT_EQ(rig.session.Layout().Lines.size(), 2u);
}

}  // namespace
}  // namespace warpline
