#include "fit/mark_grid.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

namespace warpline {
namespace {

constexpr double kSameLine = 0.002;  // of the panel
constexpr double kUnevenness = 0.1;  // of the distance to the next line
constexpr int kNoMark = -1;

// Places that differ and ascend; those closer than kSameLine count as one.
std::vector<double> LinesOf(std::vector<double> places) {
  std::sort(places.begin(), places.end());
  std::vector<double> lines;
  for (const double place : places) {
    if (lines.empty() || place - lines.back() > kSameLine) lines.push_back(place);
  }
  return lines;
}

bool IsEven(const std::vector<double>& lines) {
  const double step = (lines.back() - lines.front()) / static_cast<double>(lines.size() - 1);
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const double even = lines.front() + static_cast<double>(i) * step;
    if (std::abs(lines[i] - even) > kUnevenness * step) return false;
  }
  return true;
}

bool ReachesEdges(const std::vector<double>& lines) {
  return lines.front() <= kOuterMarksWithin && lines.back() >= 1 - kOuterMarksWithin;
}

int IndexOf(const std::vector<double>& lines, double place) {
  const auto next = std::upper_bound(lines.begin(), lines.end(), place);
  return static_cast<int>(next - lines.begin()) - 1;
}

std::size_t CellOf(const MarkGrid& grid, int row, int column) {
  return static_cast<std::size_t>(row) * static_cast<std::size_t>(grid.Columns) +
         static_cast<std::size_t>(column);
}

// The mark at each cell of the grid, row by row.
std::vector<int> CellsOf(const MarkGrid& grid, const std::vector<bool>& kept) {
  std::vector<int> cells(CellOf(grid, grid.Rows, 0), kNoMark);
  for (std::size_t i = 0; i < grid.Column.size(); ++i) {
    if (!kept[i]) continue;
    cells[CellOf(grid, grid.Row[i], grid.Column[i])] = static_cast<int>(i);
  }
  return cells;
}

// Twice the area of a triangle, above 0 when its corners go round as the clock does.
double AreaOf(const Mark& a, const Mark& b, const Mark& c) {
  return (b.X - a.X) * (c.Y - a.Y) - (c.X - a.X) * (b.Y - a.Y);
}

}  // namespace

std::optional<MarkGrid> MarkGridOf(const Marks& marks, NamedText& reason) {
  std::vector<double> u;
  std::vector<double> v;
  for (const Mark& mark : marks) {
    u.push_back(mark.U);
    v.push_back(mark.V);
  }
  const std::vector<double> columns = LinesOf(u);
  const std::vector<double> rows = LinesOf(v);
  MarkGrid grid{static_cast<int>(columns.size()), static_cast<int>(rows.size()), {}, {}};
  if (grid.Columns < kLeastGridLines || grid.Rows < kLeastGridLines) {
    reason = {"FitTooFewMarks", {std::to_string(grid.Columns), std::to_string(grid.Rows)}};
    return std::nullopt;
  }
  for (const Mark& mark : marks) {
    grid.Column.push_back(IndexOf(columns, mark.U));
    grid.Row.push_back(IndexOf(rows, mark.V));
  }
  const std::vector<int> cells = CellsOf(grid, std::vector<bool>(marks.size(), true));
  const auto empty = static_cast<std::size_t>(std::ranges::count(cells, kNoMark));
  if (!IsEven(columns) || !IsEven(rows) || cells.size() - empty != marks.size()) {
    reason = {"FitUnevenGrid"};
  } else if (!ReachesEdges(columns) || !ReachesEdges(rows)) {
    reason = {"FitGridInside"};
  } else if (empty * kMarksAMissingOne > cells.size()) {
    reason = {"FitMarksMissing", {std::to_string(empty), std::to_string(cells.size())}};
  } else {
    return grid;
  }
  return std::nullopt;
}

NamedText OrderFault(const Marks& marks, const MarkGrid& grid, const std::vector<bool>& kept) {
  const std::vector<int> cells = CellsOf(grid, kept);
  const auto at = [&](int row, int column) { return cells[CellOf(grid, row, column)]; };
  int turned = 0;
  int triangles = 0;
  for (int row = 0; row + 1 < grid.Rows; ++row) {
    for (int column = 0; column + 1 < grid.Columns; ++column) {
      const std::array<int, 4> corners{at(row, column), at(row, column + 1),
                                       at(row + 1, column + 1), at(row + 1, column)};
      for (std::size_t i = 0; i < corners.size(); ++i) {
        const int a = corners[i];
        const int b = corners[(i + 1) % 4];
        const int c = corners[(i + 2) % 4];
        if (a == kNoMark || b == kNoMark || c == kNoMark) continue;
        ++triangles;
        turned += AreaOf(marks[static_cast<std::size_t>(a)], marks[static_cast<std::size_t>(b)],
                         marks[static_cast<std::size_t>(c)]) > 0
                      ? 0
                      : 1;
      }
    }
  }
  if (turned == 0) return {};
  return {turned > triangles * 9 / 10 ? "FitMarksMirrored" : "FitMarksCrossed"};
}

}  // namespace warpline
