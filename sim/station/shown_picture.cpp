#include "sim/station/shown_picture.h"

#include <algorithm>
#include <array>

namespace warpline::sim {
namespace {

using Rgb = std::array<std::uint8_t, 3>;

constexpr Rgb kAtLimitColour{255, 0, 255};
constexpr Rgb kBehindColour{120, 0, 140};

// A tick at both ends of a line: row or column number i.
void DrawTicks(RgbImage& image, Axis axis, int i, const Rgb& colour) {
  const int length = axis == kHorizontal ? image.Width : image.Height;
  const int tick = std::max(6, length / 100);
  for (int at = 0; at < tick; ++at) {
    for (const int along : {at, length - 1 - at}) {
      const int x = axis == kHorizontal ? along : i;
      const int y = axis == kHorizontal ? i : along;
      std::ranges::copy(colour, image.Pixels.begin() + (image.At(x, y) - image.Pixels.data()));
    }
  }
}

// The number of lines at their limit.
int MarkLines(RgbImage& image, const RegisterSet& registers, Axis axis, bool draw) {
  const PanelSize panel{image.Width, image.Height};
  const std::vector<LineMark> marks = LineMarks(registers[axis], LineCount(panel, axis));
  for (std::size_t i = 0; draw && i < marks.size(); ++i) {
    if (marks[i] == LineMark::kSure) continue;
    DrawTicks(image, axis, static_cast<int>(i),
              marks[i] == LineMark::kAtLimit ? kAtLimitColour : kBehindColour);
  }
  return static_cast<int>(std::ranges::count(marks, LineMark::kAtLimit));
}

}  // namespace

ShownPicture PanelAsShown(const RgbImage& source, const RegisterSet& working, Power power,
                          bool marks) {
  const bool on = power == Power::kOn;
  ShownPicture shown;
  shown.Image =
      on ? PanelPicture(source, working) : BlackImage(PanelSize{source.Width, source.Height});
  shown.RowsAtLimit = MarkLines(shown.Image, working, kHorizontal, on && marks);
  shown.ColumnsAtLimit = MarkLines(shown.Image, working, kVertical, on && marks);
  return shown;
}

}  // namespace warpline::sim
