#pragma once

#include <wx/display.h>
#include <wx/toplevel.h>

// What it takes to have a window fill a display, pixel for pixel.

namespace warpline {

// How many pixels the display of that number has.
wxSize PixelsOf(unsigned number, const wxDisplay& display);

// What the system calls the place where the display of that number is plugged in; may be empty.
wxString ConnectorName(unsigned display);

// Asks the system to let the window, which is shown on the display of that number already, fill it
// without a frame, and to leave that again. Some do so a moment later, or not at all.
void FillDisplay(wxTopLevelWindow& window, unsigned display);
void LeaveFullScreen(wxTopLevelWindow& window);

}  // namespace warpline
