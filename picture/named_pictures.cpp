#include "picture/named_pictures.h"

#include <algorithm>
#include <cmath>

#include "picture/marks_picture.h"
#include "picture/test_picture.h"

namespace warpline {
namespace {

template <TestPattern kPattern>
RgbImage Draw(PanelSize panel) {
  return TestPicture(panel, kPattern);
}

constexpr NamedPicture kNamedPictures[] = {
    {"card", Draw<TestPattern::kCard>},           {"grid", Draw<TestPattern::kGrid>},
    {"checkerboard", Draw<TestPattern::kPixels>}, {"circles", Draw<TestPattern::kCircles>},
    {"white", Draw<TestPattern::kWhite>},         {"marks", MarksPicture, true},
};

int Scaled(int length, double scale) {
  return std::max(2, static_cast<int>(std::nearbyint(length * scale)));
}

}  // namespace

std::span<const NamedPicture> NamedPictures() {
  return kNamedPictures;
}

RgbImage FittedPicture(const RgbImage& picture, PanelSize panel) {
  const double scale = std::min(static_cast<double>(panel.Width) / picture.Width,
                                static_cast<double>(panel.Height) / picture.Height);
  const RgbImage fitted =
      Resized(picture, {Scaled(picture.Width, scale), Scaled(picture.Height, scale)});
  RgbImage image = BlackImage(panel);
  const int left = (panel.Width - fitted.Width) / 2;
  const int top = (panel.Height - fitted.Height) / 2;
  for (int y = 0; y < fitted.Height; ++y) {
    const auto* row = fitted.At(0, y);
    std::copy(row, row + std::ptrdiff_t{3} * fitted.Width,
              image.Pixels.begin() + (image.At(left, top + y) - image.Pixels.data()));
  }
  return image;
}

}  // namespace warpline
