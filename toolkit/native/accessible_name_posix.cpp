#include "toolkit/native/accessible_name.h"

#include "toolkit/native/toolkit_symbols_posix.h"

namespace warpline {
namespace {

using GetAccessible = void*(void* widget);
using SetText = void(void* accessible, const char* utf8);

void Set(void* accessible, const char* function, const wxString& text) {
  if (auto* set = ToolkitFunction<SetText>(function)) set(accessible, text.utf8_str());
}

}  // namespace

void SetAccessibleName(wxWindow& control, const wxString& name, const wxString& description) {
  auto* accessible_of = ToolkitFunction<GetAccessible>("gtk_widget_get_accessible");
  if (accessible_of == nullptr) return;
  void* accessible = accessible_of(control.GetHandle());
  Set(accessible, "atk_object_set_name", name);
  Set(accessible, "atk_object_set_description", description);
}

}  // namespace warpline
