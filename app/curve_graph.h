#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/correction.h"

// The graph of the curve editor: its units, its grid, and where it lies in a client area. 500 units
// stand for 1.0; x grows to the right from X = 0 at 0, y downwards from Y = 1.0 at 25 to Y = 0.75,
// the lowest that a point may have, at 150.

namespace warpline {

inline constexpr int kGraphUnits = 500;
inline constexpr int kGraphTop = 25;
inline constexpr int kGraphBottom = 150;
inline constexpr double kLowestPointY = 0.75;
inline constexpr double kHighestPointY = 1.0;

struct GraphPosition {
  int x = 0;
  int y = 0;

  bool operator==(const GraphPosition&) const = default;
};

// A place that need not lie on a whole unit, or a place in pixels.
struct GraphPlace {
  double x = 0;
  double y = 0;

  bool operator==(const GraphPlace&) const = default;
};

// Where a point lies, rounded to whole units. Throws Fault for coordinates that are not finite or
// do not fit.
GraphPosition GraphPositionOf(const CurvePoint& point);

// The coordinates at a unit.
double GraphX(int units);
double GraphY(int units);

// Samples at equal steps over X = 0..1 as a line in graph units. Samples outside 0.75..1.0 are
// kept: an approximation may swing beyond its points.
std::vector<GraphPlace> CurveLine(const std::vector<double>& samples);

// The light lines behind the curve: upright ones at every 0.1 of X, level ones at every 0.05 of Y,
// each with the figures that stand at its foot or at its left end.
struct GridLine {
  GraphPlace from;
  GraphPlace to;
  std::string label;
};
std::vector<GridLine> GridLines();

// A coordinate in figures, with a point whatever the system's language.
std::string CoordinateText(double value, int decimals);

// The number that typed figures mean, with a point or a comma; blanks around it say nothing.
// Nothing when they mean no number.
std::optional<double> CoordinateOf(std::string figures);

// Space in pixels around the grid, for labels and for points at the edges.
struct GraphMargins {
  double left = 0;
  double top = 0;
  double right = 0;
  double bottom = 0;
};

// Where the graph lies in a client area: pixels = offset + scale * units.
struct GraphPlacement {
  double scale_x = 1;
  double scale_y = 1;
  double offset_x = 0;
  double offset_y = 0;

  GraphPlace ToPixels(GraphPlace units) const;
  GraphPosition ToUnits(
      GraphPlace pixels) const;  // the nearest unit, far outside pixels held to +-100000
};

// The placement whose grid (500 by 125 units) fills the area within the margins; never smaller than
// a tenth of a pixel a unit.
GraphPlacement PlaceGraph(double client_width, double client_height, const GraphMargins& margins);

}  // namespace warpline
