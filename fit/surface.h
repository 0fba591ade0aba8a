#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "fit/plane.h"

// Where panel positions land in a plane, between and beyond the marks: a polynomial in both
// coordinates, with a second one on the other side of a middle line where the wall has a fold.

namespace warpline {

enum class Fold { kNone, kUpright, kLevel };  // along the panel's middle column, or its middle row

class Surface {
 public:
  // u and v as Mark has them; a little outside 0..1 will do.
  PlanePoint At(double u, double v) const;

 private:
  friend struct SurfaceFitter;
  int degree_ = 0;
  Fold fold_ = Fold::kNone;
  std::vector<double> x_;  // one coefficient a term
  std::vector<double> y_;
};

struct SurfaceFit {
  Surface Shape;
  std::vector<double> Misfit;  // of each place: how far it lies from where the others put it
  double EdgeError = 0;        // standard error of the panel's edges on the surface
};

// The surface through the places (u, v) that are kept, 20 or more of them in lines columns and rows
// at least; landed holds the same number of points. The simplest one that foretells each place from
// the others about as well as any does.
SurfaceFit FitSurface(std::span<const PlanePoint> places, std::span<const PlanePoint> landed,
                      const std::vector<bool>& kept, int lines);

// The same, and drops from kept each place that lies quite elsewhere than the others put it
// (farther than least), one after the other, at most a twentieth of them and one.
SurfaceFit FitSurfaceWithoutStrays(std::span<const PlanePoint> places,
                                   std::span<const PlanePoint> landed, int lines, double least,
                                   std::vector<bool>& kept);

}  // namespace warpline
