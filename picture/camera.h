#pragma once

#include <array>
#include <optional>

#include "picture/wall.h"

// What a camera sees of the picture on a wall.
//
// It looks at where the middle of the panel lands and is zoomed so that the picture of a flat wall
// at that distance would fill a share of the photograph. Places are those of the wall: metres from
// the lens, to the right, down and ahead. Positions in a photograph are pixels from its left and
// top edge, a pixel's centre at a half.

namespace warpline {

struct Camera {
  double X = 0;
  double Y = 0;
  double Z = -4;
  double K1 = 0;    // what is r half diagonals off the photograph's middle is seen at
                    // r * (1 + K1 * r^2); -0.14..0.2
  double Roll = 0;  // degrees, turns the camera clockwise
  PanelSize Photo{2000, 1500};
  double Filled = 0.5;  // of the photograph's width (or height, where that is less) by the picture
  double Room = 0.1;    // light of the room on its lighter side, the left one; 1: as light as white
};

inline constexpr double kLeastRadialTerm = -0.14;  // below -4/27 no corner is seen
inline constexpr double kMostRadialTerm = 0.2;

// One in the audience: twice as far from the wall as the projector, as high as the picture's
// middle.
Camera AudienceCamera(const Wall& wall, PanelSize panel);

// The same camera with the largest photograph of its shape that fits into a size.
Camera FittedInto(Camera camera, PanelSize size);

// A camera at its place.
class CameraView {
 public:
  // Nothing when the camera is not in front of the wall, or too near to what it looks at.
  static std::optional<CameraView> Of(const Wall& wall, PanelSize panel, const Camera& camera);

  // Where the photograph shows a panel position, also beyond its edges; nothing where the light
  // misses the wall or lands behind the camera. That one part of a wall may hide another is not
  // looked at.
  std::optional<std::array<double, 2>> PhotoPosition(double column, double row) const;

  // The panel position whose light is seen at a place of the photograph, also beyond the panel;
  // nothing where there is no wall. depth is where the search begins and what it finds: how far
  // ahead of the lens the wall is there.
  std::optional<std::array<double, 2>> PanelPosition(double x, double y, double& depth) const;

 private:
  using Vector = std::array<double, 3>;

  CameraView(const Wall& wall, PanelSize panel, const Camera& camera)
      : wall_(wall), panel_(panel), camera_(camera) {}

  Wall wall_;
  PanelSize panel_;
  Camera camera_;
  double focal_ = 0;              // pixels
  double half_diagonal_ = 0;      // pixels
  std::array<Vector, 3> axes_{};  // right, down and ahead of the camera
};

// The photograph of a panel's picture. It is darker towards the corners, has noise that is the same
// each time, and is white where there is too much light. Black where the camera cannot stand.
RgbImage PhotographOf(const RgbImage& panel_picture, const Wall& wall, const Camera& camera);

}  // namespace warpline
