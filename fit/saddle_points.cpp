#include "fit/saddle_points.h"

#include <Eigen/LU>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <mutex>
#include <numbers>

#include "picture/rows.h"

namespace warpline {
namespace {

using Eigen::Matrix2d;
using Eigen::Vector2d;

constexpr int kRing = 16;  // pixels around a place, at even angles
constexpr int kReach = 4;  // how far they are off it
constexpr std::array<std::array<int, 2>, kRing> kRingOffsets{{{4, 0},
                                                              {4, 2},
                                                              {3, 3},
                                                              {2, 4},
                                                              {0, 4},
                                                              {-2, 4},
                                                              {-3, 3},
                                                              {-4, 2},
                                                              {-4, 0},
                                                              {-4, -2},
                                                              {-3, -3},
                                                              {-2, -4},
                                                              {0, -4},
                                                              {2, -4},
                                                              {3, -3},
                                                              {4, -2}}};
constexpr int kLeastStrength = 40;
constexpr double kFaintGradient = 4;  // light a pixel; less may be noise
constexpr int kApart = 3;             // pixels, at least, each way

using Strengths = std::vector<std::int16_t>;

// How much every place of a row looks like a saddle point: opposite pixels of the ring are alike
// and those a quarter further are not, which tells a chequer from an edge and from a line.
Strengths StrengthsOf(const GreyImage& image, int y) {
  Strengths strengths(static_cast<std::size_t>(image.Width));
  std::array<const std::uint8_t*, kRing> ring{};
  for (std::size_t i = 0; i < kRing; ++i) {
    ring[i] = image.Row(y + kRingOffsets[i][1]) + kRingOffsets[i][0];
  }
  const std::uint8_t* const above = image.Row(y - 1);
  const std::uint8_t* const row = image.Row(y);
  const std::uint8_t* const below = image.Row(y + 1);
  for (int x = kReach; x < image.Width - kReach; ++x) {
    int saddle = 0;
    int unlike = 0;
    int sum = 0;
    for (std::size_t i = 0; i < kRing / 4; ++i) {
      const int a = ring[i][x];
      const int b = ring[i + 4][x];
      const int c = ring[i + 8][x];
      const int d = ring[i + 12][x];
      saddle += std::abs(a + c - b - d);
      unlike += std::abs(a - c) + std::abs(b - d);
      sum += a + b + c + d;
    }
    const int middle = row[x] + row[x - 1] + row[x + 1] + above[x] + below[x];
    const int strength = saddle - unlike - std::abs(sum - middle * kRing / 5);
    strengths[static_cast<std::size_t>(x)] = static_cast<std::int16_t>(std::max(strength, 0));
  }
  return strengths;
}

bool IsHighest(const std::vector<Strengths>& rows, int x, int y) {
  const auto here = rows[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)];
  for (int j = y - kApart; j <= y + kApart; ++j) {
    const Strengths& row = rows[static_cast<std::size_t>(j)];
    for (int i = x - kApart; i <= x + kApart; ++i) {
      const auto there = row[static_cast<std::size_t>(i)];
      const bool before = j < y || (j == y && i < x);
      if (there > here || (there == here && before)) return false;
    }
  }
  return true;
}

// Which way the light squares lie, by the ring's second harmonic.
SaddlePoint SaddleAt(const GreyImage& image, int x, int y, int strength) {
  std::array<double, kRing> light{};
  double cosine = 0;
  double sine = 0;
  for (std::size_t i = 0; i < kRing; ++i) {
    light[i] = image.Row(y + kRingOffsets[i][1])[x + kRingOffsets[i][0]];
    const double angle = std::atan2(kRingOffsets[i][1], kRingOffsets[i][0]);
    cosine += light[i] * std::cos(2 * angle);
    sine += light[i] * std::sin(2 * angle);
  }
  const double angle = std::atan2(sine, cosine) / 2;
  const auto brightest =
      static_cast<std::size_t>(std::lround(angle / (2 * std::numbers::pi) * kRing + kRing) % kRing);
  const auto at = [&](std::size_t off) { return light[(brightest + off) % kRing]; };
  return {{x + 0.5, y + 0.5},
          {std::cos(angle), std::sin(angle)},
          static_cast<double>(strength),
          (at(0) + at(kRing / 2)) / 2,
          (at(kRing / 4) + at(kRing * 3 / 4)) / 2};
}

// Within the mark, falling to nothing at its edge, so that what is around it does not count.
double WeightAt(const Vector2d& local) {
  static constexpr double kWithin = 0.85;  // of a square's side
  const double x = local.x() / kWithin;
  const double y = local.y() / kWithin;
  if (std::abs(x) >= 1 || std::abs(y) >= 1) return 0;
  return (1 - x * x) * (1 - x * x) * (1 - y * y) * (1 - y * y);
}

// Half the size of an upright box around the chequer, pixels.
Vector2d BoxOf(const Chequer& chequer) {
  return chequer.Across.cwiseAbs() + chequer.Down.cwiseAbs();
}

bool Holds(const GreyImage& image, const Vector2d& place, const Vector2d& box) {
  return place.x() - box.x() >= 2 && place.y() - box.y() >= 2 &&
         place.x() + box.x() <= image.Width - 2 && place.y() + box.y() <= image.Height - 2;
}

// Calls visit(place, gradient) for each pixel of the box around the chequer's place.
template <typename Visit>
void ForEachGradient(const GreyImage& image, const Chequer& chequer, const Visit& visit) {
  const Vector2d box = BoxOf(chequer);
  const auto left = static_cast<int>(chequer.Place.x() - box.x());
  const auto right = static_cast<int>(chequer.Place.x() + box.x());
  const auto top = static_cast<int>(chequer.Place.y() - box.y());
  const auto bottom = static_cast<int>(chequer.Place.y() + box.y());
  for (int y = top; y <= bottom; ++y) {
    const std::uint8_t* const row = image.Row(y);
    for (int x = left; x <= right; ++x) {
      visit(Vector2d(x + 0.5, y + 0.5),
            Vector2d((row[x + 1] - row[x - 1]) / 2.0,
                     (row[x + image.Width] - row[x - image.Width]) / 2.0));
    }
  }
}

// Every edge through a point stands upright on the gradients along it: the point that fits best.
// A gradient counts by its size, not by the square of it: an edge within a pixel of the panel is
// two steps of light, and lies between them by their shares.
std::optional<Vector2d> WhereEdgesMeet(const GreyImage& image, const Chequer& chequer) {
  Matrix2d frame;
  frame << chequer.Across, chequer.Down;
  const Matrix2d to_local = frame.inverse();
  Matrix2d sum = Matrix2d::Zero();
  Vector2d moment = Vector2d::Zero();
  ForEachGradient(image, chequer, [&](const Vector2d& pixel, const Vector2d& gradient) {
    const Vector2d off = pixel - chequer.Place;
    const double weight = WeightAt(to_local * off);
    if (weight == 0) return;
    const Matrix2d outer =
        gradient * gradient.transpose() * (weight / (gradient.norm() + kFaintGradient));
    sum += outer;
    moment += outer * off;
  });
  const double trace = sum.trace();
  if (sum.determinant() <= 0.01 * trace * trace) return std::nullopt;
  return chequer.Place + sum.inverse() * moment;
}

// Nothing when the squares do not look like a chequer's.
std::optional<ChequerLook> LookOf(const GreyImage& image, const Chequer& chequer) {
  static constexpr double kLeastContrast = 6;
  const auto light = [&](double across, double down) {
    const Vector2d at = chequer.Place + chequer.Across * across + chequer.Down * down;
    return LightAt(image, at.x(), at.y());
  };
  const double before = light(-0.5, -0.5);
  const double behind = light(0.5, 0.5);
  const double left = light(-0.5, 0.5);
  const double right = light(0.5, -0.5);
  ChequerLook look{(before + behind) / 2, (left + right) / 2, 0};
  const double contrast = look.Bright - look.Dark;
  const double least = std::min(before, behind) - std::max(left, right);
  if (contrast < kLeastContrast || least < contrast / 2) return std::nullopt;
  double steepest = 1;
  ForEachGradient(image, chequer, [&](const Vector2d&, const Vector2d& gradient) {
    steepest = std::max(steepest, gradient.norm());
  });
  look.EdgeWidth = contrast / steepest;
  return look;
}

}  // namespace

std::vector<SaddlePoint> FindSaddlePoints(const GreyImage& image, std::size_t most) {
  constexpr int kEdge = kReach + kApart;
  std::vector<Strengths> rows(static_cast<std::size_t>(image.Height),
                              Strengths(static_cast<std::size_t>(image.Width)));
  if (std::min(image.Width, image.Height) <= 2 * kEdge) return {};
  ForEachRow(image.Height - 2 * kReach, [&](int y) {
    rows[static_cast<std::size_t>(y) + kReach] = StrengthsOf(image, y + kReach);
  });
  std::vector<SaddlePoint> found;
  std::mutex mutex;
  ForEachRow(image.Height - 2 * kEdge, [&](int row) {
    const int y = row + kEdge;
    for (int x = kEdge; x < image.Width - kEdge; ++x) {
      const int strength = rows[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)];
      if (strength < kLeastStrength || !IsHighest(rows, x, y)) continue;
      const std::lock_guard lock(mutex);
      found.push_back(SaddleAt(image, x, y, strength));
    }
  });
  // The rows come in any order.
  std::ranges::sort(found, [](const SaddlePoint& a, const SaddlePoint& b) {
    return std::tuple(-a.Strength, a.Place.y(), a.Place.x()) <
           std::tuple(-b.Strength, b.Place.y(), b.Place.x());
  });
  if (found.size() > most) found.resize(most);
  return found;
}

std::optional<ChequerLook> RefineChequer(const GreyImage& image, Chequer& chequer) {
  constexpr int kSteps = 20;
  constexpr double kSettled = 0.002;  // pixels
  constexpr double kFarthest = 0.5;   // of a square's side
  Chequer moved = chequer;
  const double farthest = kFarthest * std::min(chequer.Across.norm(), chequer.Down.norm());
  for (int i = 0; i < kSteps; ++i) {
    if (!Holds(image, moved.Place, BoxOf(moved))) return std::nullopt;
    const std::optional<Vector2d> next = WhereEdgesMeet(image, moved);
    if (!next || (*next - chequer.Place).norm() > farthest) return std::nullopt;
    const double step = (*next - moved.Place).norm();
    moved.Place = *next;
    if (step < kSettled) break;
  }
  if (!Holds(image, moved.Place, BoxOf(moved))) return std::nullopt;
  const std::optional<ChequerLook> look = LookOf(image, moved);
  if (look) chequer = moved;
  return look;
}

}  // namespace warpline
