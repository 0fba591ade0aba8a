#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "fit/plane.h"

// Where panel positions land in a plane, between and beyond the marks: a polynomial in both
// coordinates, with a second one on the other side of a middle line where the wall has a fold.

namespace warpline {

enum class Fold { kNone, kUpright, kLevel };  // along the panel's middle column, or its middle row

// The polynomial's degrees: in u, in v and of both together.
struct SurfaceKind {
  int Across = 0;
  int Down = 0;
  int Both = 0;
  Fold Folded = Fold::kNone;
};

class Surface {
 public:
  // u and v as Mark has them; a little outside 0..1 will do.
  PlanePoint At(double u, double v) const;

 private:
  friend struct SurfaceFitter;
  SurfaceKind kind_;
  std::vector<PlanePoint> terms_;  // one coefficient each way a term
};

struct MarkLines {
  int Columns = 0;
  int Rows = 0;
};

enum class Strays { kNone, kMaybe };  // among the places

struct SurfaceFit {
  Surface Shape;
  std::vector<double> Misfit;  // of each place: how far it lies from where the others put it
  double EdgeError = 0;        // standard error of the panel's edges on the surface
};

// The surface through the places (u, v) that are kept, 20 or more of them on lines of that
// number; landed holds the same number of points. The simplest one that foretells each place from
// the others about as well as any does.
SurfaceFit FitSurface(std::span<const PlanePoint> places, std::span<const PlanePoint> landed,
                      const std::vector<bool>& kept, MarkLines lines, Strays strays);

// Whether a place is one of the outermost marks'.
bool IsOuter(const PlanePoint& place);

// The same, and drops from kept each place that lies quite elsewhere than the others put it
// (farther than least), one after the other, at most a twentieth of them and one. Outer places that
// all lie off, since the wall bends hard there, stay.
SurfaceFit FitSurfaceWithoutStrays(std::span<const PlanePoint> places,
                                   std::span<const PlanePoint> landed, MarkLines lines,
                                   double least, std::vector<bool>& kept);

}  // namespace warpline
