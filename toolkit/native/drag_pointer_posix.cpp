#include "toolkit/native/drag_pointer.h"

namespace warpline {

// The window system does so by itself while a button is pressed; the toolkit's own way would keep
// the keys from every window.
void HoldDragPointer(wxWindow&) {}

void ReleaseDragPointer(wxWindow&) {}

}  // namespace warpline
