#include "picture/camera.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace warpline {
namespace {

constexpr PanelSize kPanel{1024, 768};

// The picture of a flat wall 3 m ahead is 2 m wide; the camera stands as far away as it looks.
TEST(Camera, SeesThePictureAsItIsPlacedAndZoomed) {
  const Wall wall{WallShape::kFlat, 3, 0, LensAxis::kMiddle};
  const double focal = 1500 * std::sqrt(2.0);
  const std::tuple<Camera, double, double, std::array<double, 2>> cases[] = {
      {{}, 512, 384, {1000, 750}},  // it looks at the middle
      {{}, 0, 0, {500, 375}},
      {{}, 1024, 192, {1500, 562.5}},
      {{.Z = -0.5, .Filled = 0.8}, 0, 768, {200, 1350}},
      {{.Roll = 90}, 1024, 384, {1000, 250}},  // turned clockwise, it sees all turned back
      {{.K1 = 0.1}, 0, 0, {487.5, 365.625}},   // half as far off as the corner: 2.5 % more
      {{.X = 3, .Z = 0}, 512, 384, {1000, 750}},
      // 45 degrees aside, 3 * sqrt(2) m off: a metre to the right is 1 / sqrt(2) nearer.
      {{.X = 3, .Z = 0}, 1024, 384, {1000 + focal / 5, 750}},
      {{.X = 3, .Z = 0}, 0, 384, {1000 - focal / 7, 750}},
  };
  for (const auto& [camera, column, row, expected] : cases) {
    const auto view = CameraView::Of(wall, kPanel, camera);
    ASSERT_TRUE(view);
    const auto found = view->PhotoPosition(column, row);
    ASSERT_TRUE(found);
    EXPECT_NEAR((*found)[0], expected[0], 1e-6) << camera.X << " " << camera.Roll;
    EXPECT_NEAR((*found)[1], expected[1], 1e-6);
    double depth = 1;
    const auto back = view->PanelPosition((*found)[0], (*found)[1], depth).value();
    EXPECT_NEAR(back[0], column, 1e-4);
    EXPECT_NEAR(back[1], row, 1e-4);
    EXPECT_NEAR(depth, 3, 1e-9);
  }
  for (const Camera& camera : {Camera{.Z = 3}, {.Z = 7}, {.X = 9, .Z = 2.9999}, {.Z = 2.95}}) {
    EXPECT_EQ(CameraView::Of(wall, kPanel, camera).has_value(), camera.X > 0) << camera.Z;
  }
}

TEST(Camera, CutsOffWhatIsTooBrightAndDarkensTheCorners) {
  RgbImage white = BlackImage(kPanel);
  std::ranges::fill(white.Pixels, std::uint8_t{255});
  const Wall wall{WallShape::kFlat, 3, 0, LensAxis::kMiddle};
  const auto mean = [&](const RgbImage& photo, int x, int y) {
    double sum = 0;
    for (int i = 0; i < 100; ++i) sum += *photo.At(x + i % 10, y + i / 10) / 100.0;
    return sum;
  };
  const RgbImage dim = PhotographOf(white, wall, {.Photo = {400, 300}, .Room = 0});
  EXPECT_NEAR(mean(dim, 195, 145), 0.85 * 255, 1);
  EXPECT_LT(mean(dim, 110, 85), 0.82 * 255);
  EXPECT_NEAR(mean(dim, 10, 145), 0, 2);
  const RgbImage lit = PhotographOf(white, wall, {.Photo = {400, 300}, .Room = 0.5});
  EXPECT_GT(mean(lit, 130, 145), 254);
  EXPECT_GT(mean(lit, 10, 145), mean(lit, 385, 145) + 30) << "light from the left";
  EXPECT_EQ(lit.Pixels, PhotographOf(white, wall, {.Photo = {400, 300}, .Room = 0.5}).Pixels);
}

}  // namespace
}  // namespace warpline
