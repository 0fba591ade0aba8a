#include "picture/marks_picture.h"

#include <algorithm>
#include <cmath>

namespace warpline {
namespace {

constexpr double kDark = 48;
constexpr double kBlack = 0;
constexpr double kLight = 255;
constexpr double kLinesOfPanel = 384;  // that the line along the edge would fill the height with

// Edges in pixels, anywhere on the panel.
struct Box {
  double left;
  double top;
  double right;
  double bottom;
};

// How much of pixel i lies between two edges.
double Share(int i, double from, double to) {
  return std::clamp(std::min<double>(i + 1, to) - std::max<double>(i, from), 0.0, 1.0);
}

// A pixel on the box's edge takes the level by its share, so that the box lies exactly there.
void Fill(RgbImage& image, const Box& box, double level) {
  const int left = std::max(0, static_cast<int>(std::floor(box.left)));
  const int right = std::min(image.Width, static_cast<int>(std::ceil(box.right)));
  const int top = std::max(0, static_cast<int>(std::floor(box.top)));
  const int bottom = std::min(image.Height, static_cast<int>(std::ceil(box.bottom)));
  for (int y = top; y < bottom; ++y) {
    std::uint8_t* pixel = image.Pixels.data() + (image.At(left, y) - image.Pixels.data());
    for (int x = left; x < right; ++x, pixel += 3) {
      const double share = Share(x, box.left, box.right) * Share(y, box.top, box.bottom);
      const double mixed = pixel[0] + (level - pixel[0]) * share;
      std::fill_n(pixel, 3, static_cast<std::uint8_t>(std::lround(mixed)));
    }
  }
}

void DrawMark(RgbImage& image, double x, double y) {
  const double side = std::max(1.0, kMarkSquare * image.Height);
  Fill(image, {x - side, y - side, x + side, y + side}, kBlack);
  Fill(image, {x - side, y - side, x, y}, kLight);
  Fill(image, {x, y, x + side, y + side}, kLight);
}

// The dots of the cell whose upper left mark is that one.
void DrawDots(RgbImage& image, int column, int row, std::size_t count) {
  const double width = (MarkU(1) - MarkU(0)) * image.Width;
  const double height = (MarkV(1) - MarkV(0)) * image.Height;
  for (std::size_t i = 0; i < count; ++i) {
    const double x = MarkU(column) * image.Width + kDotPlaces[i][0] * width;
    const double y = MarkV(row) * image.Height + kDotPlaces[i][1] * height;
    const double across = width * kDotSize / 2;
    const double down = height * kDotSize / 2;
    Fill(image, {x - across, y - down, x + across, y + down}, kLight);
  }
}

void DrawEdge(RgbImage& image) {
  const double width = image.Width;
  const double height = image.Height;
  const double line = std::max(1.0, std::round(height / kLinesOfPanel));
  Fill(image, {0, 0, width, line}, kLight);
  Fill(image, {0, height - line, width, height}, kLight);
  Fill(image, {0, 0, line, height}, kLight);
  Fill(image, {width - line, 0, width, height}, kLight);
}

}  // namespace

RgbImage MarksPicture(PanelSize panel) {
  RgbImage image = BlackImage(panel);
  const double width = panel.Width;
  const double height = panel.Height;
  Fill(image, {0, 0, width, height}, kDark);
  for (int row = 0; row < kMarkRows; ++row) {
    for (int column = 0; column < kMarkColumns; ++column) {
      DrawMark(image, MarkU(column) * width, MarkV(row) * height);
    }
  }
  DrawDots(image, 0, 0, 1);
  DrawDots(image, kMarkColumns - 2, 0, 2);
  DrawDots(image, kMarkColumns - 2, kMarkRows - 2, 3);
  DrawDots(image, 0, kMarkRows - 2, 4);
  DrawEdge(image);
  return image;
}

}  // namespace warpline
