#include "sim/picture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#define STB_IMAGE_IMPLEMENTATION
#define STB_IMAGE_STATIC
#define STBI_ONLY_PNG
#define STBI_NO_STDIO
#include <stb/stb_image.h>

#include "model/registers.h"
#include "sim/projector.h"

namespace warpline::sim {
namespace {

constexpr PanelSize kPanel{160, 120};

std::vector<std::int32_t> Flat(int count) {
  return std::vector<std::int32_t>(static_cast<std::size_t>(count), kUnitScale);
}

RgbImage White() {
  RgbImage image = BlackImage(kPanel);
  std::ranges::fill(image.Pixels, std::uint8_t{255});
  return image;
}

// The length of a white row or column in pixels, those at its ends counted by their brightness.
double Extent(int count, const std::function<const std::uint8_t*(int)>& at) {
  double sum = 0;
  for (int i = 0; i < count; ++i) sum += at(i)[0] / 255.0;
  return sum;
}

TEST(Picture, IsTheTestPictureWhenNothingIsCorrected) {
  const RgbImage picture = PanelPicture(TestPicture(kPanel), NeutralRegisters(kPanel));
  EXPECT_EQ(picture.Pixels, TestPicture(kPanel).Pixels);
}

TEST(Picture, MakesEachLineAsLongAsItsScaleSays) {
  std::vector<std::int32_t> rows;
  std::vector<std::int32_t> columns;
  for (int y = 0; y < kPanel.Height; ++y) rows.push_back(kUnitScale + 250 * y);
  for (int x = 0; x < kPanel.Width; ++x) columns.push_back(kUnitScale + 90 * (x % 100));
  const RgbImage by_rows = WarpedPicture(White(), rows, Flat(kPanel.Width));
  for (int y = 0; y < kPanel.Height; ++y) {
    const double meant = kPanel.Width * 32768.0 / rows[static_cast<std::size_t>(y)];
    EXPECT_NEAR(Extent(kPanel.Width, [&](int x) { return by_rows.At(x, y); }), meant, 0.02) << y;
  }
  const RgbImage by_columns = WarpedPicture(White(), Flat(kPanel.Height), columns);
  for (int x = 0; x < kPanel.Width; ++x) {
    const double meant = kPanel.Height * 32768.0 / columns[static_cast<std::size_t>(x)];
    EXPECT_NEAR(Extent(kPanel.Height, [&](int y) { return by_columns.At(x, y); }), meant, 0.02)
        << x;
  }
}

TEST(Picture, HalvesARowByMeetingPairsOfPixels) {
  std::vector<std::int32_t> rows = Flat(kPanel.Height);
  rows[31] = 2 * kUnitScale;
  rows[32] = 0;
  rows[33] = -5;
  const RgbImage source = TestPicture(kPanel);
  const RgbImage warped = WarpedPicture(source, rows, Flat(kPanel.Width));
  for (int x = 40; x < 120; ++x) {
    for (int i = 0; i < 3; ++i) {
      const double pair = (source.At(2 * x - 80, 31)[i] + source.At(2 * x - 79, 31)[i]) / 2.0;
      EXPECT_NEAR(warped.At(x, 31)[i], pair, 1.0) << x;
    }
  }
  for (const int y : {32, 33}) {
    EXPECT_EQ(Extent(kPanel.Width, [&](int x) { return warped.At(x, y); }), 0) << y;
  }
  EXPECT_TRUE(std::equal(source.At(0, 34), source.At(0, 35), warped.At(0, 34)));
}

TEST(Picture, FollowsTheRegisters) {
  RegisterSet registers = NeutralRegisters(kPanel);
  registers[kHorizontal][kCorre0] = "00A0";  // 40960: 160 * 0.8 = 128 pixels
  registers[kVertical][kCorre0] = "0090";    // 36864: 120 * 8 / 9 = 106.7 pixels
  const RgbImage picture = PanelPicture(TestPicture(kPanel), registers);
  const RgbImage meant = WarpedPicture(TestPicture(kPanel), std::vector<std::int32_t>(120, 40960),
                                       std::vector<std::int32_t>(160, 36864));
  EXPECT_EQ(picture.Pixels, meant.Pixels);
  EXPECT_EQ(picture.At(15, 60)[2], 0) << "beside the picture";
  EXPECT_GT(picture.At(16, 60)[2], 60) << "its first column";
}

TEST(Picture, IsWrittenAsAPng) {
  const RgbImage picture = TestPicture(kPanel);
  const std::optional<std::string> png = PngOf(picture);
  ASSERT_TRUE(png);
  int width = 0;
  int height = 0;
  int channels = 0;
  const std::unique_ptr<stbi_uc, void (*)(void*)> pixels(
      stbi_load_from_memory(reinterpret_cast<const stbi_uc*>(png->data()),
                            static_cast<int>(png->size()), &width, &height, &channels, 3),
      stbi_image_free);
  ASSERT_TRUE(pixels);
  EXPECT_EQ((PanelSize{width, height}), kPanel);
  EXPECT_TRUE(std::equal(picture.Pixels.begin(), picture.Pixels.end(), pixels.get()));
}

}  // namespace
}  // namespace warpline::sim
