#include "picture/test_picture.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "core/table_order.h"
#include "picture/rows.h"

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
constexpr Rgb kWhite{255, 255, 255};

constexpr int kHatchCells = 16;       // across the panel's width
constexpr double kHalfLine = 1.0;     // half the width of the pattern's lines, pixels
constexpr double kMarkLength = 0.06;  // of the panel's height
constexpr int kSquare = 32;           // pixels

// How much of a pixel a line covers whose middle is that far away.
double Coverage(double distance) {
  return std::clamp(kHalfLine + 0.5 - distance, 0.0, 1.0);
}

// A circle's line. Places are seen from the circle's centre.
class Circle {
 public:
  explicit Circle(double radius)
      : radius_(radius),
        inner_(std::max(radius - kReach, 0.0) * std::max(radius - kReach, 0.0)),
        outer_((radius + kReach) * (radius + kReach)) {}

  bool Reaches(double dx, double dy) const {
    const double square = dx * dx + dy * dy;
    return square > inner_ && square < outer_;
  }

  double CoverageAt(double dx, double dy) const {
    return Reaches(dx, dy) ? Coverage(std::abs(std::sqrt(dx * dx + dy * dy) - radius_)) : 0;
  }

 private:
  static constexpr double kReach = kHalfLine + 0.5;

  double radius_;
  double inner_;
  double outer_;
};

void Blend(Colour& colour, const Colour& over, double share) {
  if (share == 0) return;
  for (std::size_t i = 0; i < colour.size(); ++i) colour[i] += (over[i] - colour[i]) * share;
}

Rgb Rounded(const Colour& colour) {
  Rgb rounded{};
  for (std::size_t i = 0; i < colour.size(); ++i) {
    rounded[i] = static_cast<std::uint8_t>(std::lround(colour[i]));
  }
  return rounded;
}

// The pixels along one axis, as seen from points that stand step apart, one of them in the middle:
// the way to the nearest.
std::vector<double> WaysToNearest(int pixels, double step) {
  std::vector<double> ways(static_cast<std::size_t>(pixels));
  for (int i = 0; i < pixels; ++i) {
    const double from_middle = i + 0.5 - pixels / 2.0;
    ways[static_cast<std::size_t>(i)] = from_middle - std::round(from_middle / step) * step;
  }
  return ways;
}

// Lines there instead of points.
std::vector<double> LineCoverage(int pixels, double step) {
  std::vector<double> coverage = WaysToNearest(pixels, step);
  for (double& each : coverage) each = Coverage(std::abs(each));
  return coverage;
}

// The cross-hatch of a panel.
class Hatch {
 public:
  explicit Hatch(PanelSize panel)
      : columns_(LineCoverage(panel.Width, StepOf(panel))),
        rows_(LineCoverage(panel.Height, StepOf(panel))) {
    for (const double share : columns_) between_rows_.push_back(Rounded(Line(share)));
  }

  static double StepOf(PanelSize panel) { return static_cast<double>(panel.Width) / kHatchCells; }

  Colour At(int x, int y) const {
    return Line(
        std::max(columns_[static_cast<std::size_t>(x)], rows_[static_cast<std::size_t>(y)]));
  }

  // The same, rounded.
  Rgb PixelAt(int x, int y) const {
    const bool between = rows_[static_cast<std::size_t>(y)] == 0;
    return between ? between_rows_[static_cast<std::size_t>(x)] : Rounded(At(x, y));
  }

 private:
  static Colour Line(double share) {
    Colour colour = kGround;
    Blend(colour, kHatch, share);
    return colour;
  }

  std::vector<double> columns_;
  std::vector<double> rows_;
  std::vector<Rgb> between_rows_;
};

template <typename PixelAt>
void Fill(RgbImage& image, const PixelAt& pixel_at) {
  ForEachRow(image.Height, [&](int y) {
    auto out = image.Pixels.begin() + (image.At(0, y) - image.Pixels.data());
    for (int x = 0; x < image.Width; ++x) {
      const Rgb pixel = pixel_at(x, y);
      out = std::ranges::copy(pixel, out).out;
    }
  });
}

PanelSize SizeOf(const RgbImage& image) {
  return {image.Width, image.Height};
}

// What the card shows beside its hatch. Places are seen from the centre.
class CardMarks {
 public:
  explicit CardMarks(PanelSize panel)
      : w_(panel.Width / 2.0), h_(panel.Height / 2.0), large_(0.9 * h_), small_(0.25 * h_) {}

  // Most places have none.
  bool Reach(double dx, double dy) const {
    const double from_side = w_ - std::abs(dx);
    const double from_top = h_ - std::abs(dy);
    return large_.Reaches(dx, dy) || small_.Reaches(h_ / 3 - from_side, h_ / 3 - from_top) ||
           std::min(std::abs(dx), std::abs(dy)) < kWidest ||
           std::min(from_side, from_top) < kWidest;
  }

  void AddTo(Colour& colour, double dx, double dy) const {
    const double from_side = w_ - std::abs(dx);
    const double from_top = h_ - std::abs(dy);
    Blend(colour, kCircle, large_.CoverageAt(dx, dy));
    Blend(colour, kCircle, small_.CoverageAt(h_ / 3 - from_side, h_ / 3 - from_top));
    if (std::max(std::abs(dx), std::abs(dy)) < 0.2 * h_) {
      Blend(colour, kCross, Coverage(std::min(std::abs(dx), std::abs(dy)) - 1));
    }
    if (std::max(from_side, from_top) < 2 * kMarkLength * h_) {
      Blend(colour, kMark, Coverage(std::min(from_side, from_top) - 2 * kHalfLine));
    }
  }

 private:
  static constexpr double kWidest = 4 * kHalfLine;  // more than the half of any line

  double w_;
  double h_;
  Circle large_;
  Circle small_;
};

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

void DrawCard(RgbImage& image) {
  const Hatch hatch(SizeOf(image));
  const CardMarks marks(SizeOf(image));
  const double w = image.Width / 2.0;
  const double h = image.Height / 2.0;
  Fill(image, [&](int x, int y) {
    if (!marks.Reach(x + 0.5 - w, y + 0.5 - h)) return hatch.PixelAt(x, y);
    Colour colour = hatch.At(x, y);
    marks.AddTo(colour, x + 0.5 - w, y + 0.5 - h);
    return Rounded(colour);
  });
  if (image.Width < 640) return;
  DrawRuler(image);
  NumberHatch(image);
}

// A number on the grid's ground, in the cell behind the lines that cross at (x, y).
void NumberCell(RgbImage& image, int number, int x, int y) {
  constexpr int kSize = 2;
  const std::string text = std::to_string(number);
  const int width = static_cast<int>(text.size()) * 6 * kSize + kSize;
  for (int i = 0; i < width * 9 * kSize; ++i) {
    PutPixel(image, x + 2 + i % width, y + 7 + i / width, Rounded(kGround));
  }
  WriteDots(image, text, x + 2 + kSize, y + 7 + kSize, kSize, kNumber);
}

// Every second line has its number, at the panel's edge and in its middle.
void DrawGrid(RgbImage& image) {
  static const Rgb kFaint = Rounded(kHatch);
  static const Rgb kBetween = Rounded(kGround);
  Fill(image, [](int x, int y) {
    if (x % kSquare == 0 || y % kSquare == 0) return kWhite;
    return x % 8 == 0 || y % 8 == 0 ? kFaint : kBetween;
  });
  constexpr int kNumbered = 2 * kSquare;
  const auto middle = [](int length) { return length / 2 / kNumbered * kNumbered; };
  for (int x = kNumbered; x < image.Width; x += kNumbered) {
    for (const int y : {0, middle(image.Height) + kSquare}) NumberCell(image, x, x, y);
  }
  for (int y = kNumbered; y < image.Height; y += kNumbered) {
    for (const int x : {0, middle(image.Width)}) NumberCell(image, y, x, y);
  }
}

// Every fourth square both ways has squares of single pixels.
void DrawChecker(RgbImage& image) {
  Fill(image, [](int x, int y) {
    const bool fine = x / kSquare % 4 == 1 && y / kSquare % 4 == 1;
    const bool light = fine ? (x + y) % 2 == 0 : (x / kSquare + y / kSquare) % 2 == 0;
    return light ? kWhite : Rgb{};
  });
}

void DrawWhite(RgbImage& image) {
  std::ranges::fill(image.Pixels, kWhite[0]);
}

void DrawPixels(RgbImage& image) {
  Fill(image, [](int x, int y) { return (x + y) % 2 == 0 ? kWhite : Rgb{}; });
}

// Around every fourth crossing both ways, so that each circle touches its neighbours.
void DrawCircles(RgbImage& image) {
  const Hatch hatch(SizeOf(image));
  const double radius = 2 * Hatch::StepOf(SizeOf(image));
  const Circle circle(radius);
  const std::vector<double> columns = WaysToNearest(image.Width, 2 * radius);
  const std::vector<double> rows = WaysToNearest(image.Height, 2 * radius);
  Fill(image, [&](int x, int y) {
    const double dx = columns[static_cast<std::size_t>(x)];
    const double dy = rows[static_cast<std::size_t>(y)];
    if (!circle.Reaches(dx, dy)) return hatch.PixelAt(x, y);
    Colour colour = hatch.At(x, y);
    Blend(colour, kCircle, circle.CoverageAt(dx, dy));
    return Rounded(colour);
  });
}

struct PatternRow {
  TestPattern pattern;
  void (*draw)(RgbImage& image);  // onto black
};

constexpr std::array kPatterns{
    PatternRow{TestPattern::kCard, DrawCard},       PatternRow{TestPattern::kGrid, DrawGrid},
    PatternRow{TestPattern::kChecker, DrawChecker}, PatternRow{TestPattern::kWhite, DrawWhite},
    PatternRow{TestPattern::kPixels, DrawPixels},   PatternRow{TestPattern::kCircles, DrawCircles},
};
static_assert(RowsStandInOrder(kPatterns, &PatternRow::pattern));

}  // namespace

RgbImage TestPicture(PanelSize panel, TestPattern pattern) {
  RgbImage image = BlackImage(panel);
  kPatterns.at(static_cast<std::size_t>(pattern)).draw(image);
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
