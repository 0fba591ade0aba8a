#include "picture/test_picture.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace warpline {
namespace {

using Colour = std::array<double, 3>;
using Rgb = std::array<std::uint8_t, 3>;

constexpr Colour kGround{40, 48, 72};
constexpr Colour kHatch{150, 160, 180};
constexpr Colour kCircle{255, 210, 60};
constexpr Colour kCross{255, 80, 80};
constexpr Colour kMark{255, 255, 255};
constexpr Rgb kNumber{190, 230, 190};
constexpr Rgb kTick{255, 255, 255};

constexpr int kHatchCells = 16;       // across the panel's width
constexpr double kHalfLine = 1.0;     // half the width of the pattern's lines, pixels
constexpr double kMarkLength = 0.06;  // of the panel's height
constexpr int kSquare = 32;           // pixels

// How much of a pixel a line covers whose middle is that far away.
double Coverage(double distance) {
  return std::clamp(kHalfLine + 0.5 - distance, 0.0, 1.0);
}

void Blend(Colour& colour, const Colour& over, double share) {
  for (std::size_t i = 0; i < colour.size(); ++i) colour[i] += (over[i] - colour[i]) * share;
}

double DistanceToGrid(double value, double step) {
  return std::abs(value - std::round(value / step) * step);
}

// The card around the panel's centre: dx and dy from the centre, half sizes w and h.
Colour CardAt(double dx, double dy, double w, double h) {
  const double step = 2 * w / kHatchCells;
  const double radius = std::hypot(dx, dy);
  const double corner_radius = std::hypot(std::abs(dx) - (w - h / 3), std::abs(dy) - (h - h / 3));
  Colour colour = kGround;
  Blend(colour, kHatch,
        std::max(Coverage(DistanceToGrid(dx, step)), Coverage(DistanceToGrid(dy, step))));
  Blend(colour, kCircle, Coverage(std::abs(radius - 0.9 * h)));
  Blend(colour, kCircle, Coverage(std::abs(corner_radius - 0.25 * h)));
  if (std::max(std::abs(dx), std::abs(dy)) < 0.2 * h) {
    Blend(colour, kCross, Coverage(std::min(std::abs(dx), std::abs(dy)) - 1));
  }
  const double from_side = w - std::abs(dx);
  const double from_top = h - std::abs(dy);
  if (std::max(from_side, from_top) < 2 * kMarkLength * h) {
    Blend(colour, kMark, Coverage(std::min(from_side, from_top) - 2 * kHalfLine));
  }
  return colour;
}

Colour GridAt(int x, int y) {
  if (x % kSquare == 0 || y % kSquare == 0) return kMark;
  if (x % 8 == 0 || y % 8 == 0) return kHatch;
  return kGround;
}

// Every fourth square both ways has squares of single pixels.
Colour CheckerAt(int x, int y) {
  const bool fine = x / kSquare % 4 == 1 && y / kSquare % 4 == 1;
  const bool light = fine ? (x + y) % 2 == 0 : (x / kSquare + y / kSquare) % 2 == 0;
  return light ? kMark : Colour{};
}

Colour PatternAt(TestPattern pattern, int x, int y, PanelSize panel) {
  const double w = panel.Width / 2.0;
  const double h = panel.Height / 2.0;
  if (pattern == TestPattern::kCard) return CardAt(x + 0.5 - w, y + 0.5 - h, w, h);
  if (pattern == TestPattern::kGrid) return GridAt(x, y);
  return pattern == TestPattern::kChecker ? CheckerAt(x, y) : kMark;
}

void PutPixel(RgbImage& image, int x, int y, const Rgb& colour) {
  if (x < 0 || y < 0 || x >= image.Width || y >= image.Height) return;
  std::ranges::copy(colour, image.Pixels.begin() + (image.At(x, y) - image.Pixels.data()));
}

// A glyph's rows from the top, five dots in the low bits, the left one highest.
struct Glyph {
  char letter;
  std::array<std::uint8_t, 7> rows;
};

constexpr std::array kGlyphs{
    Glyph{'0', {14, 17, 19, 21, 25, 17, 14}}, Glyph{'1', {4, 12, 4, 4, 4, 4, 14}},
    Glyph{'2', {14, 17, 1, 2, 4, 8, 31}},     Glyph{'3', {31, 2, 4, 2, 1, 17, 14}},
    Glyph{'4', {2, 6, 10, 18, 31, 2, 2}},     Glyph{'5', {31, 16, 30, 1, 1, 17, 14}},
    Glyph{'6', {6, 8, 16, 30, 17, 17, 14}},   Glyph{'7', {31, 1, 2, 4, 8, 8, 8}},
    Glyph{'8', {14, 17, 17, 14, 17, 17, 14}}, Glyph{'9', {14, 17, 17, 15, 1, 2, 12}},
    Glyph{'A', {14, 17, 17, 31, 17, 17, 17}}, Glyph{'I', {14, 4, 4, 4, 4, 4, 14}},
    Glyph{'L', {16, 16, 16, 16, 16, 16, 31}}, Glyph{'M', {17, 27, 21, 21, 17, 17, 17}},
    Glyph{'O', {14, 17, 17, 17, 17, 17, 14}}, Glyph{'R', {30, 17, 17, 30, 20, 18, 17}},
    Glyph{'S', {15, 16, 16, 14, 1, 1, 30}},   Glyph{'T', {31, 4, 4, 4, 4, 4, 4}},
    Glyph{'U', {17, 17, 17, 17, 17, 17, 14}},
};

// Ticks along two edges: a short one at every 10th pixel, a long one at every 50th.
void DrawRuler(RgbImage& image) {
  const auto length = [](int at) { return at % 50 == 0 ? 12 : 6; };
  for (int x = 0; x < image.Width; x += 10) {
    for (int y = 0; y < length(x); ++y) PutPixel(image, x, y, kTick);
  }
  for (int y = 0; y < image.Height; y += 10) {
    for (int x = 0; x < length(y); ++x) PutPixel(image, x, y, kTick);
  }
}

// At the cross-hatch's lines, the number of the pixel behind the line.
void NumberHatch(RgbImage& image) {
  const double step = static_cast<double>(image.Width) / kHatchCells;
  const int size = image.Width >= 1600 ? 2 : 1;
  for (int i = 1; i < kHatchCells; ++i) {
    const int x = static_cast<int>(std::lround(i * step));
    WriteDots(image, std::to_string(x), x + 4, image.Height / 2 + 5, size, kNumber);
  }
  const double middle = image.Height / 2.0;
  for (int i = -static_cast<int>(middle / step); middle + i * step < image.Height; ++i) {
    const int row = static_cast<int>(std::lround(middle + i * step));
    if (row == image.Height / 2) continue;
    WriteDots(image, std::to_string(row), image.Width / 2 + 5, row + 4, size, kNumber);
  }
}

}  // namespace

RgbImage TestPicture(PanelSize panel, TestPattern pattern) {
  RgbImage image = BlackImage(panel);
  std::size_t at = 0;
  for (int y = 0; y < panel.Height; ++y) {
    for (int x = 0; x < panel.Width; ++x) {
      for (const double part : PatternAt(pattern, x, y, panel)) {
        image.Pixels[at++] = static_cast<std::uint8_t>(std::lround(part));
      }
    }
  }
  if (pattern == TestPattern::kCard && panel.Width >= 640) {
    DrawRuler(image);
    NumberHatch(image);
  }
  return image;
}

void WriteDots(RgbImage& image, std::string_view text, int x, int y, int size, Rgb colour) {
  for (const char letter : text) {
    const auto* glyph = std::ranges::find(kGlyphs, letter, &Glyph::letter);
    for (int dot = 0; glyph != kGlyphs.end() && dot < 35 * size * size; ++dot) {
      const int px = dot % (5 * size);
      const int py = dot / (5 * size);
      const std::uint8_t row = glyph->rows[static_cast<std::size_t>(py / size)];
      if ((row >> (4 - px / size) & 1) != 0) PutPixel(image, x + px, y + py, colour);
    }
    x += 6 * size;
  }
}

void StampWord(RgbImage& image) {
  const int size = std::max(1, image.Width / 512);
  const int x = 6 * size;
  const int y = image.Height - 13 * size;
  for (const int shade : {size, 0}) {
    const std::uint8_t light = shade == 0 ? 255 : 0;
    WriteDots(image, "SIMULATOR", x + shade, y + shade, size, {light, light, light});
  }
}

}  // namespace warpline
