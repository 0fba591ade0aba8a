#include "fit/lens.h"

#include <Eigen/Dense>
#include <algorithm>
#include <cmath>
#include <vector>

namespace warpline {
namespace {

constexpr double kPointError = 0.5;  // pixels
constexpr double kWantedPrecision = 0.01;

// How far the points of a line lie beside the straight line through them, to the same side
// throughout.
void AddBends(const PlaneLine& line, const Lens& lens, std::vector<double>& bends) {
  PlaneLine places;
  for (const PlanePoint& point : line) places.push_back(lens.PlaceOf(point));
  const double along_x = places.back().X - places.front().X;
  const double along_y = places.back().Y - places.front().Y;
  const double length = std::hypot(along_x, along_y);
  if (line.size() < 3 || length == 0) return;
  const auto count = static_cast<Eigen::Index>(places.size());
  Eigen::MatrixXd basis(count, 2);
  Eigen::VectorXd beside(count);
  for (Eigen::Index i = 0; i < count; ++i) {
    const PlanePoint& place = places[static_cast<std::size_t>(i)];
    const double x = place.X - places.front().X;
    const double y = place.Y - places.front().Y;
    basis.row(i) << 1, (x * along_x + y * along_y) / (length * length);
    beside(i) = (y * along_x - x * along_y) / length;
  }
  const Eigen::VectorXd bend = beside - basis * basis.colPivHouseholderQr().solve(beside);
  bends.insert(bends.end(), bend.begin(), bend.end());
}

Eigen::VectorXd BendsOf(std::span<const PlaneLine> lines, Lens lens, double k1) {
  lens.K1 = k1;
  std::vector<double> bends;
  for (const PlaneLine& line : lines) {
    if (!line.empty()) AddBends(line, lens, bends);
  }
  return Eigen::Map<Eigen::VectorXd>(bends.data(), static_cast<Eigen::Index>(bends.size()));
}

}  // namespace

PlanePoint Lens::Shown(PlanePoint place) const {
  const double r = DistanceOf(place, Middle) / Radius;
  const double factor = 1 + K1 * r * r;
  return {Middle.X + (place.X - Middle.X) * factor, Middle.Y + (place.Y - Middle.Y) * factor};
}

PlanePoint Lens::PlaceOf(PlanePoint shown) const {
  constexpr int kSteps = 20;
  const double shown_r = DistanceOf(shown, Middle) / Radius;
  if (shown_r == 0) return shown;
  double r = shown_r;
  for (int i = 0; i < kSteps; ++i) {
    const double slope = std::max(1 + 3 * K1 * r * r, 0.1);
    r -= (r * (1 + K1 * r * r) - shown_r) / slope;
  }
  const double factor = r / shown_r;
  return {Middle.X + (shown.X - Middle.X) * factor, Middle.Y + (shown.Y - Middle.Y) * factor};
}

Lens LensWithoutFault(PhotoSize photo) {
  return {{photo.Width / 2.0, photo.Height / 2.0}, std::hypot(photo.Width, photo.Height) / 2, 0};
}

std::optional<double> LensTermOf(std::span<const PlaneLine> lines, const Lens& lens) {
  constexpr int kSteps = 12;
  constexpr double kStep = 1e-4;
  double k1 = 0;
  double information = 0;
  for (int i = 0; i < kSteps; ++i) {
    const Eigen::VectorXd bends = BendsOf(lines, lens, k1);
    if (bends.size() == 0) return std::nullopt;
    const Eigen::VectorXd slopes =
        (BendsOf(lines, lens, k1 + kStep) - BendsOf(lines, lens, k1 - kStep)) / (2 * kStep);
    information = slopes.squaredNorm();
    if (!(kPointError < kWantedPrecision * std::sqrt(information))) return std::nullopt;
    k1 = std::clamp(k1 - slopes.dot(bends) / information, -kMostLensTerm, kMostLensTerm);
  }
  return k1;
}

}  // namespace warpline
