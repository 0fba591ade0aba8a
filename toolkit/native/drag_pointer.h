#pragma once

#include <wx/window.h>

// The pointer during a drag, outside the window too.

namespace warpline {

// From the press of a mouse button until ReleaseDragPointer the window hears of the pointer
// wherever it is, and still of the keys.
void HoldDragPointer(wxWindow& window);

// Does nothing when the pointer is not held any more.
void ReleaseDragPointer(wxWindow& window);

}  // namespace warpline
