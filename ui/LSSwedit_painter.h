#pragma once

#include <wx/font.h>
#include <wx/gdicmn.h>
#include <wx/string.h>

#include <optional>

#include "app/curve_editor.h"
#include "app/curve_graph.h"

class wxGraphicsContext;

// The curve editor's graph as a picture: grid, figures at its axes, curve, points.

namespace warpline {

// What stands at the ends of X, and at the right end of Y = 1.0 and of Y = 0.75.
struct WaveWords {
  wxString first;
  wxString last;
  wxString top;
  wxString foot;
};

inline constexpr const char* kWidestFigure = "0.00";

// What the picture depends on besides the curve. Lengths are in the context's units.
struct WaveLook {
  double width = 0;  // of the client area
  double height = 0;
  double dip = 1;  // the context's units in a device-independent pixel
  GraphMargins margins;
  bool focused = false;
  std::optional<GraphPosition> pointer;
  wxFont font;  // of figures and words
  WaveWords words;
};

// Room around the grid for figures and words: the widest figure, the wider of the words at the
// right, and the height of a line.
GraphMargins WaveMargins(double dip, double figure_width, double word_width, double line_height);

// Where the graph lies in the client area: what is painted there, and where the pointer is.
GraphPlacement PlaceWave(const WaveLook& look);

// Paints everything, the ground included.
void PaintWave(wxGraphicsContext& context, const CurveEditor& editor, const WaveLook& look);

}  // namespace warpline
