#include "fit/mark_finder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>

#include "picture/camera.h"
#include "picture/marks_picture.h"
#include "picture/photograph.h"
#include "picture/test_picture.h"
#include "tests/support/said.h"

namespace warpline {
namespace {

constexpr PanelSize kPanel{640, 480};
constexpr PanelSize kPhoto{1400, 1050};
constexpr const char* kWall = "cylinder:4:-0.25:bottom";

RgbImage PhotoOf(const RgbImage& picture, double filled = 0.5) {
  return PhotographOf(picture, *WallOf(kWall), {.X = 1, .Photo = kPhoto, .Filled = filled});
}

RgbImage GoodPhoto() {
  return PhotoOf(MarksPicture(kPanel));
}

// How far a mark is from where the camera sees it, pixels.
double Off(const Mark& mark, const CameraView& view) {
  const auto [x, y] = view.PhotoPosition(mark.U * kPanel.Width, mark.V * kPanel.Height).value();
  return std::hypot(x - mark.X, y - mark.Y);
}

TEST(MarkFinder, FindsEveryMarkToAFractionOfAPixel) {
  const std::tuple<const char*, Camera> cases[] = {
      {"flat:4:0:middle", {}},
      {"flat:4:0:bottom", {.X = 3, .Y = 1, .Z = -2, .K1 = 0.02}},
      {"cylinder:4:-0.25:bottom", {.X = 1.5, .Roll = 8}},
      {"cylinder:4:0.25:top", {.Y = 0.5, .Room = 0}},
      {"bow:4:-0.25:bottom", {.K1 = -0.02, .Filled = 0.6}},
      {"bow:4:0.25:middle", {.X = -2, .Roll = 60}},
      {"sphere:4:-0.25:bottom", {.X = 1.5, .Z = -3, .Filled = 0.6}},
      {"sphere:4:0.2:middle", {.K1 = 0.02}},
      {"corner:4:-0.25:bottom", {.X = 1.5}},
      {"corner:4:0.25:middle", {.Roll = -135}},
      {"ceiling:4:-0.25:middle", {.X = -1.5}},
      {"ceiling:4:0.25:middle", {.Y = 1}},
  };
  for (auto [wall, camera] : cases) {
    camera.Photo = kPhoto;
    const RgbImage photo = PhotographOf(MarksPicture(kPanel), *WallOf(wall), camera);
    const CameraView view = CameraView::Of(*WallOf(wall), kPanel, camera).value();
    NamedText reason;
    const RgbImage squeezed = ImageOfPhotograph(JpegOf(photo, 75).value(), reason).value();
    for (const RgbImage* image : {&photo, &squeezed}) {
      const FoundMarks found = FindMarks(*image, kPanel);
      EXPECT_EQ(found.Found.size(), 63u) << wall;
      EXPECT_FALSE(found.Refusal) << wall << SaidByTool(*found.Refusal);
      EXPECT_TRUE(found.Warnings.empty()) << wall << SaidByTool(found.Warnings[0]);
      for (const Mark& mark : found.Found) {
        EXPECT_LE(Off(mark, view), 0.3) << wall << " at " << mark.U << ", " << mark.V;
      }
    }
  }
}

void Paint(RgbImage& image, double x, double y, int reach, std::uint8_t light) {
  for (int row = static_cast<int>(y) - reach; row < y + reach; ++row) {
    std::fill_n(
        image.Pixels.begin() + (image.At(static_cast<int>(x) - reach, row) - image.Pixels.data()),
        6 * reach, light);
  }
}

TEST(MarkFinder, TellsWhereMissingMarksAreExpected) {
  RgbImage photo = GoodPhoto();
  const Marks all = FindMarks(photo, kPanel).Found;
  ASSERT_EQ(all.size(), 63u);
  const std::size_t hidden[] = {0, 1, 31, 40, 61};  // the corner that one dot marks, and others
  for (const std::size_t mark : hidden) Paint(photo, all[mark].X, all[mark].Y, 14, 90);
  const FoundMarks found = FindMarks(photo, kPanel);
  EXPECT_FALSE(found.Refusal);
  ASSERT_EQ(found.Warnings.size(), 1u);
  EXPECT_EQ(SaidByTool(found.Warnings[0]).substr(0, 19), "Marks not found: 5.");
  ASSERT_EQ(found.Missing.size(), std::size(hidden));
  for (std::size_t i = 0; i < std::size(hidden); ++i) {
    const Mark& was = all[hidden[i]];
    EXPECT_EQ(std::pair(found.Missing[i].U, found.Missing[i].V), std::pair(was.U, was.V));
    EXPECT_LE(std::hypot(found.Missing[i].X - was.X, found.Missing[i].Y - was.Y), 3) << hidden[i];
  }
}

TEST(MarkFinder, KnowsTheCornersOfTurnedPhotographs) {
  const RgbImage photo = GoodPhoto();
  const Mark first = FindMarks(photo, kPanel).Found.at(0);
  for (const int orientation : {2, 3, 6, 8}) {
    const FoundMarks found = FindMarks(Oriented(photo, orientation), kPanel);
    ASSERT_EQ(found.Found.size(), 63u) << orientation;
    const bool right = orientation != 8;
    const bool down = orientation == 3 || orientation == 8;
    const double x = orientation >= 6 ? first.Y : first.X;
    const double y = orientation >= 6 ? first.X : first.Y;
    const double width = orientation >= 6 ? kPhoto.Height : kPhoto.Width;
    const double height = orientation >= 6 ? kPhoto.Width : kPhoto.Height;
    EXPECT_NEAR(found.Found[0].X, right ? width - x : x, 0.1) << orientation;
    EXPECT_NEAR(found.Found[0].Y, down ? height - y : y, 0.1) << orientation;
    EXPECT_EQ(found.Refusal ? found.Refusal->Name : "", orientation == 2 ? "PhotoMirrored" : "");
  }
}

RgbImage Lit(RgbImage image, double gain, double light) {
  for (std::uint8_t& part : image.Pixels) {
    part = static_cast<std::uint8_t>(std::clamp(part * gain + light, 0.0, 255.0));
  }
  return image;
}

RgbImage Blurred(const RgbImage& image, int times) {
  const PanelSize size{image.Width, image.Height};
  return Resized(Resized(image, {size.Width / times, size.Height / times}), size);
}

// The part right of a column.
RgbImage Cut(const RgbImage& image, int left) {
  RgbImage part = BlackImage({image.Width - left, image.Height});
  for (int y = 0; y < image.Height; ++y) {
    std::copy_n(image.At(left, y), part.Width * 3,
                part.Pixels.begin() + (part.At(0, y) - part.Pixels.data()));
  }
  return part;
}

TEST(MarkFinder, SaysWhatIsWrongWithAPhotograph) {
  const RgbImage good = GoodPhoto();
  RgbImage stripes = BlackImage(kPhoto);
  for (int x = 20; x < 1380; x += 40) {
    for (int y = 20; y < 1030; y += 10) Paint(stripes, x, y, 10, 200);
  }
  RgbImage covered = good;
  Paint(covered, 700, 740, 300, 90);
  const std::tuple<const char*, RgbImage, const char*> cases[] = {
      {"black", BlackImage({400, 400}), "PhotoDark"},
      {"white", Lit(good, 0, 255), "PhotoBurnt"},
      {"dark", Lit(good, 0.07, 0), "PhotoDark"},
      {"dim", Lit(good, 0.2, 0), "PhotoMarksDark"},
      {"bright", Lit(good, 2, 0), "PhotoMarksBurnt"},
      {"burnt out", Lit(good, 20, 0), "PhotoBurnt"},
      {"blurred", Blurred(good, 7), "PhotoBlurred"},
      {"very blurred", Blurred(good, 20), "PhotoBlurred"},
      {"stripes", stripes, "PhotoNoMarks"},
      {"card", PhotoOf(TestPicture(kPanel)), "PhotoNoMarks"},
      {"squares", PhotoOf(TestPicture(kPanel, TestPattern::kChecker)), "PhotoNoMarks"},
      {"half outside", Cut(good, 700), "PhotoPartly"},
      {"corners outside", PhotoOf(MarksPicture(kPanel), 1.2), "PhotoPartly"},
      {"half covered", covered, "PhotoFewMarks"},
      {"small", PhotoOf(MarksPicture(kPanel), 0.4), "PhotoCoarse"},
      {"wide", PhotoOf(MarksPicture(kPanel), 0.8), "PhotoFilled"},
  };
  for (const auto& [name, photo, said] : cases) {
    FoundMarks found = FindMarks(photo, kPanel);
    std::vector<NamedText>& all = found.Warnings;
    if (found.Refusal) all.insert(all.begin(), *found.Refusal);
    ASSERT_FALSE(all.empty()) << name;
    EXPECT_EQ(all[0].Name, said) << name;
    EXPECT_EQ(SaidByTool(all[0]).find('{'), std::string::npos);
  }
}

}  // namespace
}  // namespace warpline
