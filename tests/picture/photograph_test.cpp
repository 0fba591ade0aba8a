#include "picture/photograph.h"

#include <gtest/gtest.h>

#include "picture/marks_picture.h"
#include "tests/support/said.h"

namespace warpline {
namespace {

using namespace std::string_literals;

// The light at a place of a panel, 0..255.
int LightAt(const RgbImage& image, double x, double y) {
  return *image.At(static_cast<int>(x), static_cast<int>(y));
}

TEST(MarksPicture, HoldsEachMarkWhereItIsSaidToBe) {
  for (const PanelSize panel : {PanelSize{1024, 768}, {1280, 800}, {1920, 1200}, {64, 64}}) {
    const RgbImage picture = MarksPicture(panel);
    EXPECT_EQ(LightAt(picture, 0, 9), 255);
    EXPECT_EQ(LightAt(picture, panel.Width - 1, panel.Height - 1), 255);
    if (panel.Width == 64) continue;  // too small for marks of more than a pixel
    for (int i = 0; i < kMarkColumns * kMarkRows; ++i) {
      const double x = MarkU(i % kMarkColumns) * panel.Width;
      const double y = MarkV(i / kMarkColumns) * panel.Height;
      for (const double off : {1.5, kMarkSquare * panel.Height - 1.5}) {
        EXPECT_EQ(LightAt(picture, x - off, y - off) + LightAt(picture, x + off, y + off), 510);
        EXPECT_EQ(LightAt(picture, x - off, y + off) + LightAt(picture, x + off, y - off), 0);
      }
      EXPECT_EQ(LightAt(picture, x + kMarkSquare * panel.Height + 2, y), 48) << "beside it";
    }
  }
}

// A photograph of its four quarters 1 2 / 3 4, each in a light of its own, and what it tells of its
// orientation in a segment behind the file's first two bytes.
std::string Jpeg(const std::string& exif) {
  RgbImage image = BlackImage({640, 400});
  for (int y = 0; y < image.Height; ++y) {
    for (int x = 0; x < image.Width; ++x) {
      const int quarter = 1 + x / 320 + y / 200 * 2;
      std::fill_n(image.Pixels.begin() + (image.At(x, y) - image.Pixels.data()), 3,
                  static_cast<std::uint8_t>(50 * quarter));
    }
  }
  std::string bytes = JpegOf(image, 90).value();
  const std::string segment = "Exif\0\0"s + exif;
  const auto length = static_cast<char>(segment.size() + 2);
  return bytes.insert(2, exif.empty() ? "" : "\xFF\xFF\xE1\0"s + length + segment);
}

std::string Exif(char orientation, bool big_end) {
  if (big_end) return "MM\0*\0\0\0\x08\0\x01\x01\x12\0\x03\0\0\0\x01\0"s + orientation + "\0\0"s;
  return "II*\0\x0A\0\0\0zz\x02\0\x0F\x01\x02\0\0\0\0\0\0\0\0\0\x12\x01\x03\0\x01\0\0\0"s +
         orientation + "\0\0\0"s;
}

TEST(Photograph, IsTurnedAsItsFileSays) {
  const std::pair<std::string, std::string> cases[] = {
      {"", "1234"},
      {Exif(1, true), "1234"},
      {Exif(2, false), "2143"},
      {Exif(3, true), "4321"},
      {Exif(4, false), "3412"},
      {Exif(5, true), "1324"},
      {Exif(6, false), "3142"},
      {Exif(7, true), "4231"},
      {Exif(8, false), "2413"},
      {Exif(9, true), "1234"},
      {Exif(6, false).substr(0, 24), "1234"},         // cut off
      {"MM\0*\xFF\xFF\xFF\xF0\xFF\xFF"s, "1234"},     // leads outside
      {"MM\0+"s + Exif(6, true).substr(4), "1234"}};  // no EXIF
  for (const auto& [exif, quarters] : cases) {
    NamedText reason;
    const std::optional<RgbImage> image = ImageOfPhotograph(Jpeg(exif), reason);
    ASSERT_TRUE(image) << SaidByTool(reason);
    std::string found;
    for (const auto& [x, y] : {std::pair(0.25, 0.25), {0.75, 0.25}, {0.25, 0.75}, {0.75, 0.75}}) {
      found += std::to_string((LightAt(*image, x * image->Width, y * image->Height) + 25) / 50);
    }
    EXPECT_EQ(found, quarters);
    EXPECT_EQ(image->Width, (quarters[0] + quarters[1]) % 2 == 0 ? 400 : 640);
  }
  // What some cameras put behind the picture may look like anything.
  NamedText none;
  EXPECT_TRUE(ImageOfPhotograph(Jpeg("") + "\xFF\xC4\x01\x13"s + std::string(300, '\xFF'), none));
  std::string png = PngOf(BlackImage({400, 320})).value();
  const std::string exif = Exif(8, true);
  png.insert(33, "\0\0\0"s + static_cast<char>(exif.size()) + "eXIf" + exif + "sums");
  NamedText reason;
  EXPECT_EQ(ImageOfPhotograph(png, reason).value_or(RgbImage{}).Height, 400);
}

TEST(Photograph, ThatCannotBeReadIsToldOf) {
  const std::string jpeg = Jpeg("");
  const std::string huge = "\x4E\x20\x4E\x20"s;  // 20000 by 20000
  std::string huge_jpeg = jpeg, huge_png = PngOf(BlackImage({400, 320})).value();
  huge_jpeg.replace(jpeg.find("\xFF\xC0") + 5, 4, huge);
  huge_png.replace(16, 8, "\0\0"s + huge.substr(0, 2) + "\0\0"s + huge.substr(2));
  const std::pair<std::string, std::string> cases[] = {
      {"", "no photograph"},
      {"GIF89a" + jpeg, "no photograph"},
      {"\xFF\xD8\xFF", "no photograph"},
      {"\0\0\0\x18"s
       "ftypheic\0\0\0\0mif1heic"s,
       "HEIC"},
      {"\0\0\0\x18"s
       "ftypmsdk\0\0\0\0abcdmif1"s,
       "HEIC"},
      {"\0\0\0\x18"s
       "ftypisom\0\0\0\0isommp42mif1"s,
       "no photograph"},  // not in the box
      {"\0\0\0\xFF"s
       "ftyp"s,
       "no photograph"},
      {huge_jpeg, "20000x20000"},
      {huge_png, "20000x20000"},
      {PngOf(BlackImage({1, 1})).value(), "1x1"},
      {jpeg.substr(0, jpeg.find("\xFF\xDA")), "damaged"},
      {std::string(jpeg).replace(jpeg.find("\xFF\xC4") + 5, 16, 16, ' '), "no photograph"},
      {huge_png.replace(16, 8, "\0\0\x02\0\0\0\x02\0"s), "damaged"}};
  for (const auto& [bytes, part] : cases) {
    NamedText reason;
    EXPECT_FALSE(ImageOfPhotograph(bytes, reason)) << part;
    EXPECT_NE(SaidByTool(reason).find(part), std::string::npos)
        << part << ": " << SaidByTool(reason);
  }
}

}  // namespace
}  // namespace warpline
