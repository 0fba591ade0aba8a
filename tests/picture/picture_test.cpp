#include "picture/picture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "model/registers.h"
#include "picture/test_picture.h"
#include "sim/device/projector.h"
#include "tests/support/sim_hex.h"

namespace warpline::sim {
namespace {

constexpr PanelSize kPanel{160, 120};

std::vector<std::int32_t> Flat(int count) {
  return std::vector<std::int32_t>(static_cast<std::size_t>(count), kUnitScale);
}

// Lines of these scales, shorter ones in the middle.
std::vector<PanelLine> Rows(const std::vector<std::int32_t>& scales) {
  return PanelLinesOf(scales, kPanel.Width, {});
}
std::vector<PanelLine> Columns(const std::vector<std::int32_t>& scales) {
  return PanelLinesOf(scales, kPanel.Height, {});
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
  const RgbImage by_rows = WarpedPicture(White(), Rows(rows), Columns(Flat(kPanel.Width)));
  for (int y = 0; y < kPanel.Height; ++y) {
    const double meant = kPanel.Width * 32768.0 / rows[static_cast<std::size_t>(y)];
    EXPECT_NEAR(Extent(kPanel.Width, [&](int x) { return by_rows.At(x, y); }), meant, 0.02) << y;
  }
  const RgbImage by_columns = WarpedPicture(White(), Rows(Flat(kPanel.Height)), Columns(columns));
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
  const RgbImage warped = WarpedPicture(source, Rows(rows), Columns(Flat(kPanel.Width)));
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

TEST(Picture, TakesAnotherSize) {
  RgbImage picture = BlackImage({4, 2});
  picture.Pixels = FromHex("000000101010202020303030808080909090A0A0A0B0B0B0");
  const auto resized = [&](PanelSize size) { return ToHex(Resized(picture, size).Pixels); };
  EXPECT_EQ(resized({2, 2}), "080808282828888888A8A8A8") << "each pixel is the mean of two";
  EXPECT_EQ(resized({4, 1}), "404040505050606060707070");
  EXPECT_EQ(resized({4, 3}),
            "000000101010202020303030404040505050606060707070808080909090A0A0A0B0B0B0");
}

// 2 by 2 pixels with transparency: red, half green; invisible blue, white.
constexpr const char* kTransparentPng =
    "89504E470D0A1A0A0000000D494844520000000200000002080600000072B60D24000000144944415478DA63"
    "F8CFC0F01F081B18C0341000003FD708795FC76DB10000000049454E44AE426082";

// A header of 16384 by 16384 pixels with 16 bits a channel, and hardly anything behind it.
constexpr const char* kHugePng =
    "89504E470D0A1A0A0000000D4948445200004000000040001006000000F958CCC70000000949444154789C6300"
    "00000100015EFF7DF90000000049454E44AE426082";

TEST(Picture, OfTooManyPixelsIsNotDecoded) {
  const Bytes huge = FromHex(kHugePng);
  std::string reason;
  EXPECT_FALSE(ImageOfPng(std::string(huge.begin(), huge.end()), reason));
  EXPECT_EQ(reason, "it has 16384x16384 pixels; 2 each way to 64000000 in all can be used");
}

TEST(Picture, IsWrittenAndReadAsAPng) {
  const RgbImage picture = TestPicture(kPanel);
  const std::optional<std::string> png = PngOf(picture);
  ASSERT_TRUE(png);
  std::string reason;
  const std::optional<RgbImage> read = ImageOfPng(*png, reason);
  ASSERT_TRUE(read) << reason;
  EXPECT_EQ((PanelSize{read->Width, read->Height}), kPanel);
  EXPECT_EQ(read->Pixels, picture.Pixels);
  const Bytes transparent = FromHex(kTransparentPng);
  const auto on_black = ImageOfPng(std::string(transparent.begin(), transparent.end()), reason);
  ASSERT_TRUE(on_black) << reason;
  EXPECT_EQ(ToHex(on_black->Pixels), "FF0000008000000000FFFFFF");
  EXPECT_FALSE(ImageOfPng(png->substr(0, png->size() / 2), reason));
  EXPECT_EQ(reason, "it is damaged");
  EXPECT_FALSE(ImageOfPng("", reason));
  EXPECT_FALSE(ImageOfPng("GIF89a", reason));
  EXPECT_NE(reason, "");
}

}  // namespace
}  // namespace warpline::sim
