#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "core/correction.h"
#include "core/register_set.h"
#include "fit/landing.h"

// A correction as the fit varies it: smoothly, with nothing rounded; and the nearest one that the
// tool's parameters can say.

namespace warpline {

using Orientation = std::optional<std::int16_t>;  // a projection flag, or either of them

// How an axis is shaped: the curve that its screen type gives it, stretched and turned upside down
// at will, or one whose points are free to move.
struct CurveFamily {
  CurveDefinition Seed;  // where the points stand, and what joins them
  bool Free = false;     // the points' Y may change
};

// What the lines of an axis are: each value is the size of a line at a point of the curve, or (of a
// fixed curve) of the line at Y = 0 and what one at Y = 1 is longer.
struct AxisShape {
  std::vector<double> Values;
  double OpticalCentre = 0;  // k, -2..2
  double Shift = 0;          // share of the length, to the right or down
};

// One axis of a family, ready to be drawn as often as the fit needs.
class ShapedAxis {
 public:
  explicit ShapedAxis(const CurveFamily& family);

  std::size_t ValueCount() const { return basis_.size(); }

  // The shape whose lines all have that size.
  AxisShape Even(double size) const;

  // The shape nearest to lines of these sizes, as many as AxisLines of this class hold.
  AxisShape Nearest(const AxisLines& lines) const;

  AxisLines Draw(const AxisShape& shape) const;

  // The parameters and the curve that come nearest. Optical is the optical centre, rounded. A value
  // beyond its range is held there.
  void Encode(const AxisShape& shape, Orientation orientation, CorrectionData& correction,
              Axis axis) const;

 private:
  CurveFamily family_;
  std::vector<std::vector<double>> basis_;  // what one of each value adds to the lines
  double least_y_ = 0;                      // of the fixed curve
};

// The families of a screen type, one pair an attempt; several for the type whose curves are free.
using FamilyPair = std::array<CurveFamily, kAxisCount>;
std::vector<FamilyPair> FamiliesOf(std::int16_t screen_type);

// The optical centres, k, that an orientation allows.
inline constexpr double kFarthestCentre = 2;
inline constexpr double kNearestCentre = 0.5;
double LowestCentre(Orientation orientation);
double HighestCentre(Orientation orientation);

}  // namespace warpline
