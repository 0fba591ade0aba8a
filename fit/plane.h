#pragma once

#include <array>
#include <optional>
#include <span>
#include <vector>

// Points of a plane (a photograph, the frame of the wanted rectangle), and what maps one plane onto
// another so that straight lines stay straight.

namespace warpline {

struct PlanePoint {
  double X = 0;  // to the right
  double Y = 0;  // down

  bool operator==(const PlanePoint&) const = default;
};

using PlaneLine = std::vector<PlanePoint>;

double DistanceOf(PlanePoint a, PlanePoint b);

class Homography {
 public:
  // Leaves every point where it is.
  Homography() = default;

  // The map that takes each point as near as may be to its counterpart; four of them or more, as
  // many on both sides. Nothing when the points do not fix one, or when it would tear them apart
  // at its horizon.
  static std::optional<Homography> Through(std::span<const PlanePoint> from,
                                           std::span<const PlanePoint> to);

  // A point at infinity comes out as not finite.
  PlanePoint operator()(PlanePoint point) const;

  Homography Inverse() const;

  // First the other one, then this one.
  Homography After(const Homography& other) const;

 private:
  std::array<double, 9> rows_{1, 0, 0, 0, 1, 0, 0, 0, 1};
};

}  // namespace warpline
