#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <span>

#include "fit/lens.h"
#include "fit/plane.h"
#include "fit/surface.h"

// What the photographer sees of the panel, and how straight a picture on it is to him.
//
// The frame is a plane in which the wanted rectangle stands upright, one unit about as high as the
// panel. Without wanted corners the best projective map of the whole panel into the photograph says
// where the camera stands: an angle of view and a bent wall are two things then only as far as the
// marks tell them apart, lines are straight for the photographer, but whether the rectangle's
// corners are right angles is known from corners alone.

namespace warpline {

struct View {
  Surface Landed;      // panel to frame, before Turned
  Homography Turned;   // where the wanted corners put the frame
  Homography ToPhoto;  // frame to a photograph by a lens without fault
  Lens Camera;
  double Aspect = 1;  // width of the panel by its height

  // Both take shares of the panel's width and height.
  PlanePoint FrameOf(PlanePoint panel) const { return Turned(Landed.At(panel.X, panel.Y)); }
  PlanePoint PhotoOf(PlanePoint panel) const { return Camera.Shown(ToPhoto(FrameOf(panel))); }
};

// An upright rectangle in the frame.
struct Sides {
  double Left = 0;
  double Top = 0;
  double Right = 0;
  double Bottom = 0;

  double Height() const { return Bottom - Top; }
  double Area() const { return (Right - Left) * (Bottom - Top); }
};

// The largest one inside the panel's light.
Sides LargestInside(const View& view);

// A straight line of the picture: an edge, or one of the grid.
struct PictureLine {
  bool Upright = false;
  bool Edge = false;
  double At = 0;  // share of the picture's width (upright) or height

  PlanePoint Point(double along) const {
    return Upright ? PlanePoint{At, along} : PlanePoint{along, At};
  }
  double Across(PlanePoint point) const { return Upright ? point.X : point.Y; }
  double Along(PlanePoint point) const { return Upright ? point.Y : point.X; }
};

inline constexpr PictureLine kPictureLines[] = {
    {true, true, 0},     {false, true, 0},     {true, true, 1},     {false, true, 1},
    {true, false, 0.25}, {true, false, 0.5},   {true, false, 0.75}, {false, false, 0.25},
    {false, false, 0.5}, {false, false, 0.75},
};
inline constexpr std::size_t kPictureEdges = 4;  // they come first: left, top, right, bottom

// Where a picture position, shares of its width and height, is seen in the frame.
using SeenAt = std::function<PlanePoint(PlanePoint picture)>;

// How far lines are off, in percent of the picture's height.
struct Straightness {
  double Edges = 0;  // the worst edge, from the straight line nearest to it
  double Grid = 0;   // the worst inner line, likewise
  double Place = 0;  // the worst edge, from its side of the wanted rectangle; 0 without one
  std::size_t WorstEdge = 0;  // index in kPictureLines
};

// A straight line through values that stand at places along it.
struct NearestLine {
  double Mean = 0;
  double Rise = 0;  // from the first value to the last
};

// The one with the least squares; the values keep what they have beside it.
NearestLine TakeNearestLine(std::span<double> values, std::span<const double> along);

// around, if not null, gets where the four edges are on the whole.
Straightness StraightnessOf(const SeenAt& seen, const std::optional<Sides>& wanted,
                            Sides* around = nullptr);

}  // namespace warpline
