#pragma once

#include <wx/font.h>
#include <wx/gdicmn.h>
#include <wx/string.h>

#include <vector>

#include "app/picture_control.h"

class wxGraphicsContext;
class wxWindow;

// What stands over the test picture, large enough to be read from across a room.

namespace warpline {

struct OverlayLayout {
  struct Line {
    wxString text;
    wxFont font;
    wxPoint at;
    wxSize size;
  };

  wxRect area;
  std::vector<Line> lines;
};

// Where everything lies in a window of that size. Fonts go by the window's height; that of a line
// which would be too wide for the window is smaller.
OverlayLayout LayOverlay(const wxWindow& window, const PictureOverlay& overlay, OverlayPlace place,
                         const wxSize& size);

// opacity: 0 nothing shows, 1 all.
void PaintOverlay(wxGraphicsContext& context, const OverlayLayout& layout, double opacity);

}  // namespace warpline
