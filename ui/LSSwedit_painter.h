#pragma once

#include <wx/font.h>
#include <wx/gdicmn.h>

#include "app/curve_editor.h"
#include "app/curve_graph.h"

class wxGraphicsContext;

// The curve editor's graph as a picture: grid, figures at its axes, curve, points.

namespace warpline {

// What the picture depends on besides the curve.
struct WaveLook {
  double width = 0;  // of the client area, in the context's units
  double height = 0;
  double dip = 1;  // the context's units in a device-independent pixel
  bool focused = false;
  wxFont font;  // of the figures
};

// Where the graph lies in the client area: what is painted there, and where the pointer is.
GraphPlacement PlaceWave(const WaveLook& look);

// Paints everything, the ground included.
void PaintWave(wxGraphicsContext& context, const CurveEditor& editor, const WaveLook& look);

}  // namespace warpline
