#include "toolkit/native/full_screen.h"

#include <vector>

#include "toolkit/native/output_modes_posix.h"
#include "toolkit/native/toolkit_symbols_posix.h"

namespace warpline {

// The toolkit's own scale is a whole number, and not the display's when that is none.
wxSize PixelsOf(unsigned number, const wxDisplay& display) {
  const std::vector<wxSize> outputs = WaylandOutputPixels();
  if (outputs.size() == wxDisplay::GetCount() && outputs[number].x > 0) return outputs[number];
  return display.GetGeometry().GetSize() * display.GetScaleFactor();
}

wxString ConnectorName(unsigned display) {
  auto* screen = ToolkitFunction<void*()>("gdk_screen_get_default");
  auto* name_of = ToolkitFunction<char*(void*, int)>("gdk_screen_get_monitor_plug_name");
  auto* release = ToolkitFunction<void(void*)>("g_free");
  if (screen == nullptr || name_of == nullptr || release == nullptr) return {};
  char* name = name_of(screen(), static_cast<int>(display));
  wxString found = wxString::FromUTF8(name == nullptr ? "" : name);
  release(name);
  return found;
}

// wxWidgets's own cannot name the display. Where no window manager is at work it does nothing, and
// the window stays as it was placed.
void FillDisplay(wxTopLevelWindow& window, unsigned display) {
  auto* screen_of = ToolkitFunction<void*(void*)>("gtk_widget_get_screen");
  auto* fill = ToolkitFunction<void(void*, void*, int)>("gtk_window_fullscreen_on_monitor");
  if (screen_of == nullptr || fill == nullptr) return;
  fill(window.GetHandle(), screen_of(window.GetHandle()), static_cast<int>(display));
}

void LeaveFullScreen(wxTopLevelWindow& window) {
  auto* leave = ToolkitFunction<void(void*)>("gtk_window_unfullscreen");
  if (leave != nullptr) leave(window.GetHandle());
}

}  // namespace warpline
