#include "fit/saddle_grid.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <optional>
#include <queue>
#include <set>
#include <utility>

namespace warpline {
namespace {

using Eigen::Vector2d;
using Cell = std::array<int, 2>;

constexpr std::size_t kMostSeeds = 300;
constexpr double kAlikeLight = 0.9;  // cosine of the angle between the light of neighbours
constexpr double kCone = 0.85;       // cosine of the angle within which a first neighbour is sought
constexpr double kFaintest = 0.15;   // of a neighbour's strength
constexpr double kOff = 0.25;        // of a step, that a neighbour may lie aside

Vector2d Turned(const Vector2d& vector, double angle) {
  const double cosine = std::cos(angle);
  const double sine = std::sin(angle);
  return {cosine * vector.x() - sine * vector.y(), sine * vector.x() + cosine * vector.y()};
}

bool AreAlike(const SaddlePoint& a, const SaddlePoint& b) {
  return std::abs(a.Light.dot(b.Light)) >= kAlikeLight && b.Strength >= kFaintest * a.Strength &&
         a.Strength >= kFaintest * b.Strength;
}

// Steps to the next column and to the next row.
using Steps = std::array<Vector2d, 2>;

class Grower {
 public:
  explicit Grower(const std::vector<SaddlePoint>& points) : points_(points) {}

  // Nothing is found when the seed has no neighbour along both directions.
  SaddleGrid GrowFrom(std::size_t seed) {
    grid_.clear();
    used_.assign(points_.size(), false);
    const std::optional<Steps> steps = FirstSteps(seed);
    if (!steps) return {};
    Take(seed, {0, 0}, *steps);
    for (; !open_.empty(); open_.pop()) Spread(open_.front());
    return grid_;
  }

  bool Used(std::size_t point) const { return used_[point]; }

 private:
  struct Node {
    std::size_t point;
    Cell cell;
    Steps steps;
  };

  const Vector2d& PlaceOf(std::size_t point) const { return points_[point].Place; }

  // The nearest point like the seed one way or the other along each direction.
  std::optional<Steps> FirstSteps(std::size_t seed) const {
    Steps steps;
    for (std::size_t axis = 0; axis < 2; ++axis) {
      const double turn = axis == 0 ? -std::numbers::pi / 4 : std::numbers::pi / 4;
      const Vector2d direction = Turned(points_[seed].Light, turn);
      double nearest = 0;
      for (std::size_t i = 0; i < points_.size(); ++i) {
        const Vector2d off = PlaceOf(i) - PlaceOf(seed);
        const double along = off.dot(direction);
        const double distance = off.norm();
        if (i == seed || std::abs(along) < kCone * distance || !AreAlike(points_[seed], points_[i]))
          continue;
        if (nearest > 0 && distance >= nearest) continue;
        nearest = distance;
        steps[axis] = along < 0 ? Vector2d(-off) : off;
      }
      if (nearest == 0) return std::nullopt;
    }
    return steps;
  }

  void Take(std::size_t point, const Cell& cell, const Steps& steps) {
    used_[point] = true;
    grid_.emplace(cell, points_[point]);
    open_.push({point, cell, steps});
  }

  void Spread(const Node& node) {
    for (std::size_t axis = 0; axis < 2; ++axis) {
      for (const int way : {1, -1}) {
        Cell cell = node.cell;
        cell[axis] += way;
        if (grid_.contains(cell)) continue;
        const Vector2d step = node.steps[axis] * way;
        const std::optional<std::size_t> next = Nearest(node, PlaceOf(node.point) + step, step);
        if (!next) continue;
        Steps steps = node.steps;
        steps[axis] = (PlaceOf(*next) - PlaceOf(node.point)) * way;
        Take(*next, cell, steps);
      }
    }
  }

  std::optional<std::size_t> Nearest(const Node& node, const Vector2d& place,
                                     const Vector2d& step) const {
    std::optional<std::size_t> found;
    double nearest = kOff * step.norm();
    for (std::size_t i = 0; i < points_.size(); ++i) {
      const double distance = (PlaceOf(i) - place).norm();
      if (distance >= nearest || used_[i] || !AreAlike(points_[node.point], points_[i])) continue;
      nearest = distance;
      found = i;
    }
    return found;
  }

  const std::vector<SaddlePoint>& points_;
  SaddleGrid grid_;
  std::vector<bool> used_;
  std::queue<Node> open_;
};

}  // namespace

SaddleGrid FindSaddleGrid(const std::vector<SaddlePoint>& points) {
  SaddleGrid best;
  Grower grower(points);
  std::vector<bool> tried(points.size());
  std::size_t seeds = 0;
  for (std::size_t seed = 0; seed < points.size() && seeds < kMostSeeds; ++seed) {
    if (tried[seed]) continue;
    ++seeds;
    SaddleGrid grid = grower.GrowFrom(seed);
    if (grid.size() <= best.size()) continue;
    best = std::move(grid);
    for (std::size_t i = 0; i < points.size(); ++i) tried[i] = tried[i] || grower.Used(i);
  }
  return best;
}

}  // namespace warpline
