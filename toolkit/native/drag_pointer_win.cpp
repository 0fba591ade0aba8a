#include "toolkit/native/drag_pointer.h"

namespace warpline {

void HoldDragPointer(wxWindow& window) {
  if (!window.HasCapture()) window.CaptureMouse();
}

void ReleaseDragPointer(wxWindow& window) {
  if (window.HasCapture()) window.ReleaseMouse();
}

}  // namespace warpline
