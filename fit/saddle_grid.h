#pragma once

#include <array>
#include <map>
#include <vector>

#include "fit/saddle_points.h"

namespace warpline {

// Saddle points that stand in columns and rows, under their column and row, counted from anywhere.
// The light squares lie before and behind both; each lies about where the one before it and the
// step there foretell, so that bent walls and cameras that stand aside do no harm.
using SaddleGrid = std::map<std::array<int, 2>, SaddlePoint>;

// The largest grid that is found from one of the strongest points.
SaddleGrid FindSaddleGrid(const std::vector<SaddlePoint>& points);

}  // namespace warpline
