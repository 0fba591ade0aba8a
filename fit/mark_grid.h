#pragma once

#include <optional>
#include <span>
#include <vector>

#include "core/texts.h"
#include "fit/marks.h"

// The regular grid that marks form on the panel.

namespace warpline {

inline constexpr int kLeastGridLines = 5;          // columns, and rows
inline constexpr double kOuterMarksWithin = 0.05;  // of the panel's edges
inline constexpr int kMarksAMissingOne = 10;       // one of so many may be missing

struct MarkGrid {
  int Columns = 0;
  int Rows = 0;
  std::vector<int> Column;  // of each mark, from 0
  std::vector<int> Row;
};

// Nothing, and the reason, when the marks are no such grid: too few, uneven, twice at the same
// place, too far inside the panel, or too many of them missing.
std::optional<MarkGrid> MarkGridOf(const Marks& marks, NamedText& reason);

// What cannot be, wherever the camera stands: a mirrored picture, or marks exchanged. Only the
// marks that are kept are looked at. No name: nothing is wrong.
NamedText OrderFault(const Marks& marks, const MarkGrid& grid, const std::vector<bool>& kept);

}  // namespace warpline
