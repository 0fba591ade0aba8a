#include "toolkit/native/focus.h"
#include "toolkit/native/toolkit_symbols_posix.h"

namespace warpline {

bool HoldsFocus(const wxWindow& control) {
  auto* top_of = ToolkitFunction<void*(void*)>("gtk_widget_get_toplevel");
  auto* focus_of = ToolkitFunction<void*(void*)>("gtk_window_get_focus");
  auto* is_inside = ToolkitFunction<int(void*, void*)>("gtk_widget_is_ancestor");
  void* widget = control.GetHandle();
  if (top_of == nullptr || focus_of == nullptr || is_inside == nullptr || widget == nullptr) {
    return control.HasFocus();
  }
  void* focus = focus_of(top_of(widget));
  return focus != nullptr && (focus == widget || is_inside(focus, widget) != 0);
}

}  // namespace warpline
