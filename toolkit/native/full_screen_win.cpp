#include "toolkit/native/full_screen.h"

namespace warpline {

// The program is aware of each monitor's scale, so units are pixels.
wxSize PixelsOf(unsigned, const wxDisplay& display) {
  return display.GetGeometry().GetSize();
}

// wxWidgets' name of a display is that already.
wxString ConnectorName(unsigned) {
  return {};
}

void FillDisplay(wxTopLevelWindow& window, unsigned) {
  window.ShowFullScreen(true);
}

void LeaveFullScreen(wxTopLevelWindow& window) {
  window.ShowFullScreen(false);
}

}  // namespace warpline
