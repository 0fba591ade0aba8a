#include "fit/view.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <vector>

namespace warpline {
namespace {

constexpr int kParts = 48;  // of a line that is measured

// The panel's edges in the frame: left, top, right, bottom.
std::array<PlaneLine, kPictureEdges> EdgesOf(const View& view) {
  std::array<PlaneLine, kPictureEdges> edges;
  for (std::size_t i = 0; i < kPictureEdges; ++i) {
    for (int part = 0; part <= kParts; ++part) {
      edges[i].push_back(view.FrameOf(kPictureLines[i].Point(static_cast<double>(part) / kParts)));
    }
  }
  return edges;
}

// The innermost place that an edge reaches between two places along it.
double Innermost(const PlaneLine& edge, const PictureLine& line, double from, double to) {
  const double inwards = line.At == 0 ? 1 : -1;
  const auto along = [&](PlanePoint point) { return line.Upright ? point.Y : point.X; };
  double innermost = -std::numeric_limits<double>::infinity();
  for (std::size_t i = 0; i + 1 < edge.size(); ++i) {
    const double begin = along(edge[i]);
    const double end = along(edge[i + 1]);
    const double first = std::max(begin, from);
    const double last = std::min(end, to);
    if (!(first <= last && begin < end)) continue;
    const double across = line.Across(edge[i]);
    const double slope = (line.Across(edge[i + 1]) - across) / (end - begin);
    for (const double at : {first, last}) {
      innermost = std::max(innermost, inwards * (across + slope * (at - begin)));
    }
  }
  return inwards * innermost;
}

struct SeenLine {
  std::vector<double> Across;
  std::vector<double> Along;
};

SeenLine SeenLineOf(const SeenAt& seen, const PictureLine& line) {
  SeenLine points;
  for (int part = 0; part <= kParts; ++part) {
    const PlanePoint point = seen(line.Point(static_cast<double>(part) / kParts));
    points.Across.push_back(line.Across(point));
    points.Along.push_back(line.Along(point));
  }
  return points;
}

double HalfRange(const std::vector<double>& values) {
  const auto [low, high] = std::ranges::minmax(values);
  return (high - low) / 2;
}

}  // namespace

NearestLine TakeNearestLine(std::span<double> values, std::span<const double> along) {
  const auto count = static_cast<double>(values.size());
  NearestLine line;
  double middle = 0;
  for (std::size_t i = 0; i < values.size(); ++i) {
    line.Mean += values[i] / count;
    middle += along[i] / count;
  }
  double products = 0;
  double squares = 0;
  for (std::size_t i = 0; i < values.size(); ++i) {
    const double at = along[i] - middle;
    products += values[i] * at;
    squares += at * at;
  }
  const double slope = squares > 0 ? products / squares : 0;
  for (std::size_t i = 0; i < values.size(); ++i) {
    values[i] -= line.Mean + slope * (along[i] - middle);
  }
  line.Rise = slope * (along.back() - along.front());
  return line;
}

Sides LargestInside(const View& view) {
  constexpr int kSteps = 8;
  constexpr double kFar = std::numeric_limits<double>::infinity();
  const auto edges = EdgesOf(view);
  const auto inside = [&](std::size_t i, double from, double to) {
    return Innermost(edges[i], kPictureLines[i], from, to);
  };
  // A side only has to clear what stands between its neighbours: as two sides move in, the two
  // others may move out. Either pair may begin.
  Sides largest;
  for (const bool sides_first : {true, false}) {
    Sides sides{inside(0, -kFar, kFar), inside(1, -kFar, kFar), inside(2, -kFar, kFar),
                inside(3, -kFar, kFar)};
    for (int i = 0; i < 2 * kSteps; ++i) {
      if ((i % 2 == 0) == sides_first) {
        sides.Left = inside(0, sides.Top, sides.Bottom);
        sides.Right = inside(2, sides.Top, sides.Bottom);
      } else {
        sides.Top = inside(1, sides.Left, sides.Right);
        sides.Bottom = inside(3, sides.Left, sides.Right);
      }
    }
    if (sides.Area() > largest.Area()) largest = sides;
  }
  return largest;
}

Straightness StraightnessOf(const SeenAt& seen, const std::optional<Sides>& wanted, Sides* around) {
  Straightness off;
  std::array<double, kPictureEdges> side{};
  std::array<double, kPictureEdges> wanted_side{};
  if (wanted) wanted_side = {wanted->Left, wanted->Top, wanted->Right, wanted->Bottom};
  for (std::size_t i = 0; i < std::size(kPictureLines); ++i) {
    SeenLine points = SeenLineOf(seen, kPictureLines[i]);
    std::vector<double>& values = points.Across;
    const auto [low, high] = std::ranges::minmax(values);
    const NearestLine line = TakeNearestLine(values, points.Along);
    const double bend = HalfRange(values);
    if (i >= kPictureEdges) {
      off.Grid = std::max(off.Grid, bend);
      continue;
    }
    side[i] = line.Mean;
    if (wanted) {
      off.Place = std::max({off.Place, high - wanted_side[i], wanted_side[i] - low});
    }
    if (bend > off.Edges) {
      off.Edges = bend;
      off.WorstEdge = i;
    }
  }
  const Sides nearest{side[0], side[1], side[2], side[3]};
  if (around != nullptr) *around = nearest;
  constexpr double kNoPicture = 1e6;  // a picture that is folded over is no good
  const bool upright = nearest.Right > nearest.Left && nearest.Bottom > nearest.Top;
  const double percent = upright ? 100 / nearest.Height() : kNoPicture;
  off.Edges *= percent;
  off.Grid *= percent;
  off.Place *= percent;
  return off;
}

}  // namespace warpline
