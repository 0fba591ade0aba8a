#pragma once

#include <array>
#include <optional>
#include <vector>

#include "core/register_set.h"
#include "fit/landing.h"
#include "fit/shape.h"
#include "fit/view.h"

// What a fit is about, and what it makes small.

namespace warpline {

inline constexpr double kLeastArea = 0.8;  // of the largest rectangle, that the picture keeps

struct FitTask {
  View Seen;
  PanelSize Panel;
  std::optional<Sides> Wanted;  // where the edges are to be; nothing: wherever they are straight
  Sides Largest;                // the largest rectangle inside the panel's light
  std::array<Orientation, kAxisCount> Orientations;
};

// What the least squares of a fit are made of, in shares of the picture's height, as many at every
// call: how far the edges and, counting less, the inner lines are off; what leaves the panel; what
// the picture lacks of the size that it is to keep; and, hardly counting, how far it is from the
// largest rectangle.
//
// Their least squares spread what cannot be straightened over all edges. worst, if above 0, is
// about how far the worst edge is off, in the same shares: then what is farther off counts far more
// and the rest far less, the size only as far as it has to be kept, and the worst edge gets
// straight.
void FillResiduals(const FitTask& task, const DrawnLines& lines, double worst,
                   std::vector<double>& residuals);

}  // namespace warpline
