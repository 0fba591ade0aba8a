#include "fit/least_squares.h"

#include <Eigen/Dense>
#include <algorithm>

namespace warpline {
namespace {

Eigen::VectorXd ResidualsAt(const Residuals& residuals, std::span<const double> point) {
  std::vector<double> values;
  residuals(point, values);
  return Eigen::Map<Eigen::VectorXd>(values.data(), static_cast<Eigen::Index>(values.size()));
}

// One column a coordinate; zero for one that stays, or that would have to leave its bounds.
Eigen::MatrixXd SlopesAt(const Residuals& residuals, std::vector<double> point,
                         const std::vector<Bounded>& bounds, const Eigen::VectorXd& here) {
  constexpr double kStep = 1e-6;
  Eigen::MatrixXd slopes =
      Eigen::MatrixXd::Zero(here.size(), static_cast<Eigen::Index>(point.size()));
  for (std::size_t i = 0; i < point.size(); ++i) {
    if (bounds[i].Low == bounds[i].High) continue;
    const double value = point[i];
    const double step = value + kStep > bounds[i].High ? -kStep : kStep;
    point[i] = value + step;
    const auto column = static_cast<Eigen::Index>(i);
    slopes.col(column) = (ResidualsAt(residuals, point) - here) / step;
    point[i] = value;
    const double downhill = -slopes.col(column).dot(here);
    if ((value >= bounds[i].High && downhill > 0) || (value <= bounds[i].Low && downhill < 0)) {
      slopes.col(column).setZero();
    }
  }
  return slopes;
}

}  // namespace

std::vector<double> LeastSquares(const Residuals& residuals, const std::vector<Bounded>& start,
                                 int most_steps) {
  constexpr double kSettled = 1e-5;  // of the sum of squares
  constexpr double kMostDamping = 1e8;
  std::vector<double> point(start.size());
  std::ranges::transform(start, point.begin(), &Bounded::Value);
  Eigen::VectorXd here = ResidualsAt(residuals, point);
  double damping = 1e-3;
  for (int step = 0; step < most_steps && damping < kMostDamping; ++step) {
    const Eigen::MatrixXd slopes = SlopesAt(residuals, point, start, here);
    const Eigen::MatrixXd normal = slopes.transpose() * slopes;
    const Eigen::VectorXd downhill = -(slopes.transpose() * here);
    const double before = here.squaredNorm();
    while (damping < kMostDamping) {
      Eigen::MatrixXd damped = normal;
      damped.diagonal() += damping * (normal.diagonal().array() + 1e-9).matrix();
      const Eigen::VectorXd move = damped.ldlt().solve(downhill);
      std::vector<double> next = point;
      for (std::size_t i = 0; i < next.size(); ++i) {
        next[i] =
            std::clamp(next[i] + move(static_cast<Eigen::Index>(i)), start[i].Low, start[i].High);
      }
      const Eigen::VectorXd there = ResidualsAt(residuals, next);
      if (there.squaredNorm() < before) {
        point = next;
        here = there;
        damping = std::max(damping / 10, 1e-9);
        break;
      }
      damping *= 10;
    }
    if (here.squaredNorm() > before * (1 - kSettled)) break;
  }
  return point;
}

}  // namespace warpline
