#include "picture/picture.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "picture/rows.h"

namespace warpline {
namespace {

constexpr int kMaxSamples = 4;     // per axis and pixel, where the picture shrinks
constexpr int kFractionBits = 32;  // of positions in the quick way

// A line as the quick way needs it: positions (less the half pixel to the left pixel's centre) in
// fixed point, and the first and last pixels that lie all in the picture and whose samples all have
// two pixels more to their right and one below.
struct QuickLine {
  std::int64_t offset = 0;
  std::int64_t slope = 0;
  int first = 0;
  int last = -1;
  int begin = 0;  // pixels begin..end-1 touch the picture
  int end = 0;
  int samples = 1;
};

std::int64_t Fixed(double value) {
  return static_cast<std::int64_t>(std::ldexp(value, kFractionBits));
}

int SamplesOf(const PanelLine& line) {
  return static_cast<int>(std::clamp(std::round(line.Slope), 1.0, double{kMaxSamples}));
}

int PixelIndex(double value, int least, int most) {
  return static_cast<int>(std::clamp<double>(value, least, most));
}

// The margin covers what fixed point rounds away.
QuickLine QuickLineOf(const PanelLine& line, int length) {
  static constexpr double kMargin = 1e-5;
  QuickLine quick;
  quick.samples = SamplesOf(line);
  if (line.Slope <= 0) return quick;
  quick.begin = PixelIndex(std::floor(-line.Offset / line.Slope), 0, length);
  quick.end = PixelIndex(std::ceil((length - line.Offset) / line.Slope), 0, length);
  if (line.Slope > length) return quick;
  const double outer =
      line.Slope * (0.5 - 0.5 / quick.samples);                // samples, from the pixel's centre
  const double reach = std::max(outer, line.Slope / 2 - 0.5);  // with the pixel all in the picture
  const double start = line.Offset + line.Slope / 2 - 0.5;     // what pixel 0's centre shows
  const double first = std::ceil((reach + kMargin - start) / line.Slope);
  const double last = std::floor((length - 2 - reach - kMargin - start) / line.Slope);
  quick.offset = Fixed(start);
  quick.slope = Fixed(line.Slope);
  quick.first = PixelIndex(first, 0, length);
  quick.last = PixelIndex(last, -1, length - 1);
  // On the panel's own grid nothing is rounded, and pixel 0 shows the picture's pixel 0.
  if (line.Slope == 1 && start == std::round(start)) {
    quick.first = PixelIndex(-start, 0, length);
    quick.last = PixelIndex(length - 3 - start, -1, length - 1);
  }
  return quick;
}

std::vector<QuickLine> QuickLines(const std::vector<PanelLine>& lines, int length) {
  std::vector<QuickLine> quick;
  quick.reserve(lines.size());
  for (const PanelLine& line : lines) quick.push_back(QuickLineOf(line, length));
  return quick;
}

// A pixel and its right neighbour, byte by byte, and two bytes that do not count; in lanes that are
// wide enough to be weighed all at once.
using PairBytes = std::uint8_t __attribute__((vector_size(8)));
using PairLanes = std::uint16_t __attribute__((vector_size(16)));

PairLanes LanesAt(const std::uint8_t* pixel) {
  PairBytes bytes;
  std::memcpy(&bytes, pixel, sizeof bytes);
  return __builtin_convertvector(bytes, PairLanes);
}

// The mean of four pixels by the position between them, in the first three lanes.
PairLanes QuickSample(const std::uint8_t* pixels, std::size_t stride, std::int64_t u,
                      std::int64_t v) {
  const auto x = static_cast<std::size_t>(u >> kFractionBits);
  const auto y = static_cast<std::size_t>(v >> kFractionBits);
  const auto fx = static_cast<std::uint16_t>(u >> (kFractionBits - 8) & 255);
  const auto fy = static_cast<std::uint16_t>(v >> (kFractionBits - 8) & 255);
  const auto rx = static_cast<std::uint16_t>(256 - fx);
  const auto ry = static_cast<std::uint16_t>(256 - fy);
  const std::uint8_t* pixel = pixels + y * stride + x * 3;
  const PairLanes mixed = (LanesAt(pixel) * ry + LanesAt(pixel + stride) * fy + 128) >> 8;
  const PairLanes weights{rx, rx, rx, fx, fx, fx, 0, 0};
  const PairLanes weighed = mixed * weights;
  const PairLanes right = __builtin_shufflevector(weighed, weighed, 3, 4, 5, 6, 7, 7, 7, 7);
  return (weighed + right + 128) >> 8;
}

void PutLanes(std::uint8_t* pixel, const PairLanes& lanes, int divisor) {
  for (int i = 0; i < 3; ++i) {
    pixel[i] = static_cast<std::uint8_t>((lanes[i] + divisor / 2) / divisor);
  }
}

// How much of pixel i the picture covers on a line of the panel.
double Share(int i, const PanelLine& line, double length) {
  const double start = std::max<double>(i, -line.Offset / line.Slope);
  const double end = std::min<double>(i + 1, (length - line.Offset) / line.Slope);
  return std::max(0.0, end - start);
}

// One rendering: what is constant over its pixels.
class Warp {
 public:
  Warp(const RgbImage& picture, const std::vector<PanelLine>& rows,
       const std::vector<PanelLine>& columns, RgbImage& image)
      : picture_(picture),
        rows_(rows),
        columns_(columns),
        quick_columns_(QuickLines(columns, picture.Height)),
        image_(image) {}

  void DrawRow(int y) const {
    const PanelLine& line = rows_[static_cast<std::size_t>(y)];
    if (line.Slope <= 0) return;
    const QuickLine row = QuickLineOf(line, picture_.Width);
    std::uint8_t* pixel = image_.Pixels.data() + (image_.At(row.begin, y) - image_.Pixels.data());
    std::int64_t u = row.offset + row.slope * row.begin;
    for (int x = row.begin; x < row.end; ++x, pixel += 3, u += row.slope) {
      const QuickLine& column = quick_columns_[static_cast<std::size_t>(x)];
      if (y < column.begin || y >= column.end) continue;
      const bool quick = x >= row.first && x <= row.last && y >= column.first && y <= column.last;
      if (!quick) {
        DrawSlowly(x, y, pixel);
      } else if (row.samples == 1 && column.samples == 1) {
        const std::int64_t v = column.offset + column.slope * y;
        PutLanes(pixel, QuickSample(picture_.Pixels.data(), Stride(), u, v), 1);
      } else {
        DrawShrunk(u, column.offset + column.slope * y, row, column, pixel);
      }
    }
  }

 private:
  std::size_t Stride() const { return static_cast<std::size_t>(picture_.Width) * 3; }

  void DrawShrunk(std::int64_t u, std::int64_t v, const QuickLine& row, const QuickLine& column,
                  std::uint8_t* pixel) const {
    const std::int64_t across = row.slope / (std::int64_t{2} * row.samples);
    const std::int64_t down = column.slope / (std::int64_t{2} * column.samples);
    PairLanes sum{};
    for (int j = 1 - column.samples; j < column.samples; j += 2) {
      for (int i = 1 - row.samples; i < row.samples; i += 2) {
        sum += QuickSample(picture_.Pixels.data(), Stride(), u + across * i, v + down * j);
      }
    }
    PutLanes(pixel, sum, row.samples * column.samples);
  }

  // The mean of the samples within the pixel, as bright as the picture's share of it.
  void DrawSlowly(int x, int y, std::uint8_t* pixel) const {
    const PanelLine& row = rows_[static_cast<std::size_t>(y)];
    const PanelLine& column = columns_[static_cast<std::size_t>(x)];
    if (column.Slope <= 0) return;
    const double share = Share(x, row, picture_.Width) * Share(y, column, picture_.Height);
    if (share <= 0) return;
    const int across = SamplesOf(row);
    const int down = SamplesOf(column);
    double sum[3]{0.5, 0.5, 0.5};
    for (int j = 0; j < down; ++j) {
      const double v = column.Offset + column.Slope * (y + (j + 0.5) / down);
      for (int i = 0; i < across; ++i) {
        const double u = row.Offset + row.Slope * (x + (i + 0.5) / across);
        AddSample(picture_, u, v, share / (across * down), sum);
      }
    }
    for (int i = 0; i < 3; ++i) pixel[i] = static_cast<std::uint8_t>(std::min(sum[i], 255.0));
  }

  const RgbImage& picture_;
  const std::vector<PanelLine>& rows_;
  const std::vector<PanelLine>& columns_;
  std::vector<QuickLine> quick_columns_;
  RgbImage& image_;
};

}  // namespace

RgbImage BlackImage(PanelSize panel) {
  const auto pixels =
      static_cast<std::size_t>(panel.Width) * static_cast<std::size_t>(panel.Height);
  return {panel.Width, panel.Height, std::vector<std::uint8_t>(pixels * 3)};
}

void AddSample(const RgbImage& image, double u, double v, double weight, double (&sum)[3]) {
  const double left = std::clamp(u - 0.5, 0.0, image.Width - 1.0);
  const double top = std::clamp(v - 0.5, 0.0, image.Height - 1.0);
  const int x = std::min(static_cast<int>(left), image.Width - 2);
  const int y = std::min(static_cast<int>(top), image.Height - 2);
  const double fx = left - x;
  const double fy = top - y;
  const std::uint8_t* above = image.At(x, y);
  const std::uint8_t* below = image.At(x, y + 1);
  for (int i = 0; i < 3; ++i) {
    sum[i] += weight * ((above[i] * (1 - fx) + above[i + 3] * fx) * (1 - fy) +
                        (below[i] * (1 - fx) + below[i + 3] * fx) * fy);
  }
}

RgbImage WarpedPicture(const RgbImage& picture, const std::vector<PanelLine>& rows,
                       const std::vector<PanelLine>& columns) {
  RgbImage image = BlackImage({picture.Width, picture.Height});
  const Warp warp(picture, rows, columns, image);
  ForEachRow(image.Height, [&warp](int y) { warp.DrawRow(y); });
  return image;
}

RgbImage PanelPicture(const RgbImage& picture, const RegisterSet& registers) {
  const PanelSize panel{picture.Width, picture.Height};
  return WarpedPicture(picture, PanelLinesOf(registers[kHorizontal], kHorizontal, panel),
                       PanelLinesOf(registers[kVertical], kVertical, panel));
}

RgbImage Resized(const RgbImage& picture, PanelSize size) {
  RgbImage image = BlackImage(size);
  const double across = static_cast<double>(picture.Width) / size.Width;
  const double down = static_cast<double>(picture.Height) / size.Height;
  const int columns = std::clamp(static_cast<int>(std::ceil(across)), 1, 2 * kMaxSamples);
  const int lines = std::clamp(static_cast<int>(std::ceil(down)), 1, 2 * kMaxSamples);
  ForEachRow(size.Height, [&](int y) {
    std::uint8_t* pixel = image.Pixels.data() + (image.At(0, y) - image.Pixels.data());
    for (int x = 0; x < size.Width; ++x, pixel += 3) {
      double sum[3]{0.5, 0.5, 0.5};
      for (int j = 0; j < lines; ++j) {
        const double v = (y + (j + 0.5) / lines) * down;
        for (int i = 0; i < columns; ++i) {
          const double u = (x + (i + 0.5) / columns) * across;
          AddSample(picture, u, v, 1.0 / (columns * lines), sum);
        }
      }
      for (int i = 0; i < 3; ++i) pixel[i] = static_cast<std::uint8_t>(std::min(sum[i], 255.0));
    }
  });
  return image;
}

}  // namespace warpline
