#pragma once

#include <functional>
#include <span>
#include <vector>

// Nonlinear least squares after Levenberg and Marquardt, with bounds.

namespace warpline {

// Fills in the residuals that a point has; as many at every call.
using Residuals =
    std::function<void(std::span<const double> point, std::vector<double>& residuals)>;

struct Bounded {
  double Value = 0;
  double Low = 0;  // equal to High: the value stays
  double High = 0;
};

// The point nearby, within the bounds, whose residuals have the least sum of squares.
std::vector<double> LeastSquares(const Residuals& residuals, const std::vector<Bounded>& start,
                                 int most_steps);

}  // namespace warpline
