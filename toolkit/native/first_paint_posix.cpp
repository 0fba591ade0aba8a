#include "toolkit/native/first_paint.h"

#include "toolkit/native/toolkit_symbols_posix.h"

namespace warpline {

// Beside the size that the window has, wxWidgets asks GTK for one of its inside, and takes that
// back when the program is idle: then GTK would lay out all of the window and paint it anew.
void PaintOnce(wxTopLevelWindow& window) {
  auto* request = ToolkitFunction<void(void*, int, int)>("gtk_widget_set_size_request");
  if (request != nullptr) request(window.m_wxwindow, -1, -1);
}

}  // namespace warpline
