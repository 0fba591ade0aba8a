#include "fit/placed_marks.h"

#include <algorithm>
#include <cstddef>
#include <tuple>
#include <vector>

namespace warpline {
namespace {

using Eigen::Vector2d;

// A way to lay the marks over a grid: where the first mark is, and how the others go on.
struct Layout {
  std::array<int, 2> first;
  int way;  // 1, or -1 for half a turn
  bool mirrored;

  std::array<int, 2> CellOf(int column, int row) const {
    const std::array<int, 2> cell{first[0] + way * (mirrored ? row : column),
                                  first[1] + way * (mirrored ? column : row)};
    return cell;
  }
};

// The corner cells by their upper left marks, in the order of their dots.
constexpr std::array<std::array<int, 2>, 4> kCornerCells{
    {{0, 0}, {kMarkColumns - 2, 0}, {kMarkColumns - 2, kMarkRows - 2}, {0, kMarkRows - 2}}};

using CellMarks = std::array<const SaddlePoint*, 4>;  // upper left, upper right, below them both

Vector2d Between(const CellMarks& marks, double across, double down) {
  return (marks[0]->Place * (1 - across) + marks[1]->Place * across) * (1 - down) +
         (marks[2]->Place * (1 - across) + marks[3]->Place * across) * down;
}

// The mean around a place of the cell.
double CellLight(const GreyImage& image, const CellMarks& marks, double across, double down) {
  constexpr double kAside = kDotSize / 5;
  double sum = 0;
  for (const double x : {-kAside, 0.0, kAside}) {
    for (const double y : {-kAside, 0.0, kAside}) {
      const Vector2d at = Between(marks, across + x, down + y);
      sum += LightAt(image, at.x(), at.y());
    }
  }
  return sum / 9;
}

// How many dots a cell has; nothing when its marks and what is between them tell no light from
// dark.
std::optional<int> DotsIn(const GreyImage& image, const CellMarks& marks) {
  double bright = 0;
  double dark = 0;
  for (const SaddlePoint* mark : marks) {
    bright += mark->Bright / 4;
    dark += mark->Dark / 4;
  }
  const double ground = CellLight(image, marks, 0.5, 0.5);
  if (bright - ground < 0.4 * (bright - dark)) return std::nullopt;
  return static_cast<int>(std::ranges::count_if(kDotPlaces, [&](const auto& place) {
    return CellLight(image, marks, place[0], place[1]) > (ground + bright) / 2;
  }));
}

std::optional<CellMarks> MarksOfCell(const SaddleGrid& grid, const Layout& layout, int column,
                                     int row) {
  CellMarks marks{};
  for (int i = 0; i < 4; ++i) {
    const auto found = grid.find(layout.CellOf(column + i % 2, row + i / 2));
    if (found == grid.end()) return std::nullopt;
    marks[static_cast<std::size_t>(i)] = &found->second;
  }
  return marks;
}

struct CornerCount {
  int right = 0;
  int wrong = 0;
};

CornerCount ReadCorners(const GreyImage& image, const SaddleGrid& grid, const Layout& layout) {
  CornerCount count;
  for (std::size_t i = 0; i < kCornerCells.size(); ++i) {
    const auto marks = MarksOfCell(grid, layout, kCornerCells[i][0], kCornerCells[i][1]);
    if (!marks) continue;
    const std::optional<int> dots = DotsIn(image, *marks);
    ++(dots == static_cast<int>(i) + 1 ? count.right : count.wrong);
  }
  return count;
}

PlacedMarks Laid(const SaddleGrid& grid, const Layout& layout) {
  PlacedMarks placed;
  placed.Mirrored = layout.mirrored;
  for (int row = 0; row < kMarkRows; ++row) {
    for (int column = 0; column < kMarkColumns; ++column) {
      const auto found = grid.find(layout.CellOf(column, row));
      if (found == grid.end()) continue;
      placed.Places[MarkIndex(column, row)] = found->second.Place;
      ++placed.Count;
    }
  }
  return placed;
}

using CellRange = std::array<int, 2>;  // the least and the most

CellRange RangeOf(const SaddleGrid& grid, std::size_t axis) {
  const auto [least, most] = std::ranges::minmax_element(
      grid, {}, [axis](const auto& entry) { return entry.first[axis]; });
  return {least->first[axis], most->first[axis]};
}

// Every way that covers as much of the grid as the marks can.
std::vector<Layout> LayoutsOver(const SaddleGrid& grid) {
  std::vector<Layout> layouts;
  for (const bool mirrored : {false, true}) {
    std::array<CellRange, 2> range{};  // of the least column and row
    for (std::size_t axis = 0; axis < 2; ++axis) {
      const auto [least, most] = RangeOf(grid, axis);
      const int count = (axis == 0) != mirrored ? kMarkColumns : kMarkRows;
      const int other = most - count + 1;
      range[axis] = {std::min(least, other), std::max(least, other)};
    }
    const int columns = (mirrored ? kMarkRows : kMarkColumns) - 1;
    const int rows = (mirrored ? kMarkColumns : kMarkRows) - 1;
    for (int x = range[0][0]; x <= range[0][1]; ++x) {
      for (int y = range[1][0]; y <= range[1][1]; ++y) {
        layouts.push_back({{x, y}, 1, mirrored});
        layouts.push_back({{x + columns, y + rows}, -1, mirrored});
      }
    }
  }
  return layouts;
}

// What the neighbours of a missing mark foretell: the mark between two, or a step further.
struct Foretold {
  Vector2d sum = Vector2d::Zero();
  double weight = 0;

  void Add(const Vector2d& place, double its_weight) {
    sum += place * its_weight;
    weight += its_weight;
  }
};

const std::optional<Vector2d>* PlaceAt(const MarkPlaces& places, int column, int row) {
  static const std::optional<Vector2d> kNone;
  const bool inside = column >= 0 && row >= 0 && column < kMarkColumns && row < kMarkRows;
  return inside ? &places[MarkIndex(column, row)] : &kNone;
}

Foretold ForetoldAt(const MarkPlaces& places, int column, int row) {
  Foretold foretold;
  const auto at = [&](int x, int y) { return *PlaceAt(places, column + x, row + y); };
  for (const auto& [x, y] : {std::pair(1, 0), {0, 1}}) {
    const auto before = at(-x, -y);
    const auto behind = at(x, y);
    if (before && behind) foretold.Add((*before + *behind) / 2, 4);
  }
  for (const auto& [x, y] : {std::pair(1, 0), {0, 1}, {-1, 0}, {0, -1}}) {
    const auto next = at(x, y);
    const auto second = at(2 * x, 2 * y);
    const auto third = at(3 * x, 3 * y);
    if (next && second && third) foretold.Add(*next * 3 - *second * 3 + *third, 1);
    if (next && second) foretold.Add(*next * 2 - *second, 0.1);
  }
  for (const auto& [x, y] : {std::pair(1, 1), {-1, 1}, {-1, -1}, {1, -1}}) {
    const auto across = at(x, 0);
    const auto down = at(0, y);
    const auto corner = at(x, y);
    if (across && down && corner) foretold.Add(*across + *down - *corner, 1);
  }
  return foretold;
}

}  // namespace

std::optional<PlacedMarks> PlaceMarks(const GreyImage& image, const SaddleGrid& grid) {
  if (grid.empty()) return std::nullopt;
  std::optional<PlacedMarks> best;
  std::tuple<int, int> best_score{0, 0};
  for (const Layout& layout : LayoutsOver(grid)) {
    const CornerCount corners = ReadCorners(image, grid, layout);
    if (corners.right == 0 || corners.right <= corners.wrong) continue;
    PlacedMarks placed = Laid(grid, layout);
    placed.Corners = corners.right;
    const std::tuple score{corners.right - corners.wrong, placed.Count};
    if (score <= best_score) continue;
    best_score = score;
    best = placed;
  }
  return best;
}

bool IsPartOfMarks(const SaddleGrid& grid) {
  constexpr std::size_t kLeast = 12;
  constexpr double kThere = 0.8;  // of the points between the outermost ones
  if (grid.size() < kLeast) return false;
  const auto [left, right] = RangeOf(grid, 0);
  const auto [top, bottom] = RangeOf(grid, 1);
  const int columns = right - left + 1;
  const int rows = bottom - top + 1;
  return columns <= kMarkColumns && rows <= kMarkRows &&
         static_cast<double>(grid.size()) >= kThere * columns * rows;
}

MarkPlaces Completed(MarkPlaces places) {
  for (std::size_t round = 0; round < kMarkCount; ++round) {
    MarkPlaces next = places;
    for (int row = 0; row < kMarkRows; ++row) {
      for (int column = 0; column < kMarkColumns; ++column) {
        const auto mark = MarkIndex(column, row);
        if (places[mark]) continue;
        const Foretold foretold = ForetoldAt(places, column, row);
        if (foretold.weight > 0) next[mark] = foretold.sum / foretold.weight;
      }
    }
    if (next == places) break;
    places = next;
  }
  return places;
}

std::array<Vector2d, 2> StepsAt(const MarkPlaces& places, std::size_t mark) {
  const int column = static_cast<int>(mark) % kMarkColumns;
  const int row = static_cast<int>(mark) / kMarkColumns;
  const auto step = [&](int x, int y) {
    const auto& before = *PlaceAt(places, column - x, row - y);
    const auto& behind = *PlaceAt(places, column + x, row + y);
    const auto& here = *places[mark];
    if (before && behind) return Vector2d((*behind - *before) / 2);
    return before ? Vector2d(here - *before) : Vector2d(*behind - here);
  };
  return {step(1, 0), step(0, 1)};
}

}  // namespace warpline
