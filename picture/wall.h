#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "picture/picture.h"

// How the projected picture lands on a screen, seen from the front and from far away.
//
// The projector stands at the origin and looks along z; its lens throws a picture of width
// z / kThrowRatio onto a wall at z. A panel position (x, y) off the lens's axis (pixels) goes to
// (x * z / f, y * z / f, z) with f = kThrowRatio * panel width. The screen is a depth z over (X,
// Y), in metres; z is the distance where the lens's axis meets it. So the place (X, Y) of the wall
// shows the panel position (X * f / z, Y * f / z).

namespace warpline {

inline constexpr double kThrowRatio = 1.5;
inline constexpr double kMinDistance = 1;  // metres
inline constexpr double kMaxDistance = 20;

enum class WallShape {
  kFlat,
  kCylinder,         // curved from left to right
  kCylinderUpright,  // curved from top to bottom
  kSphere,
  kCorner,   // two walls that meet in an upright edge
  kCeiling,  // ceiling and wall, a level edge
};
inline constexpr int kWallShapeCount = 6;

// Where the lens's axis meets the picture, from top to bottom.
enum class LensAxis { kTop, kMiddle, kBottom };

struct Wall {
  WallShape Shape = WallShape::kCylinder;
  double Distance = 4;      // metres, kMinDistance..kMaxDistance
  double Curvature = -0.4;  // -1..1. Round screens: 1 / radius in metres, above 0 the middle comes
                            // towards the projector; corners: each wall turns away by that much of
                            // 45 degrees
  LensAxis Axis = LensAxis::kBottom;
};

// The wall that a text names, "SHAPE:DISTANCE:CURVATURE:AXIS" as in "cylinder:4:-0.4:bottom". The
// shape is flat, cylinder, bow (the upright one), sphere, corner or ceiling, the axis top, middle
// or bottom; nothing when a word is none of these or a number is outside its range.
std::optional<Wall> WallOf(std::string_view text);

// The wall's depth at a place, metres; 0 where there is no wall.
double WallDepth(const Wall& wall, double x, double y);

// Where the light of a panel position lands: metres from the lens, to the right, down and ahead.
// Nothing when it misses the wall, or meets it so flatly that the search does not settle.
std::optional<std::array<double, 3>> WallPlaceOf(const Wall& wall, PanelSize panel, double column,
                                                 double row);

// The panel position whose light goes through a place at a depth above 0, metres; also beyond the
// panel.
std::array<double, 2> PanelPositionThrough(const Wall& wall, PanelSize panel, double x, double y,
                                           double depth);

// The panel position that is seen at a place of the wall (metres from the lens's axis); false when
// none is.
bool PanelPositionAt(const Wall& wall, PanelSize panel, double x, double y,
                     std::array<double, 2>& position);

// The wall as an image of that size with the panel's picture on it: a flat wall's picture fills
// four fifths of it. A wall without light on it is shaded by its slope.
RgbImage WallPicture(const RgbImage& panel_picture, const Wall& wall, PanelSize size);

// Draws faint straight lines into the picture of a wall: the largest upright rectangle that lies
// inside the uncorrected picture of a panel, so that a corrected one can be compared with it. Draws
// nothing where an edge of the uncorrected picture misses the wall.
void DrawStraightFrame(RgbImage& wall_picture, const Wall& wall, PanelSize panel);

}  // namespace warpline
