#include "toolkit/native/instant_states.h"

#include "toolkit/native/toolkit_symbols_posix.h"

namespace warpline {

void ShowStatesAtOnce() {
  auto* settings = ToolkitFunction<void*()>("gtk_settings_get_default");
  auto* set = ToolkitFunction<void(void*, const char*, ...)>("g_object_set");
  if (settings == nullptr || set == nullptr || settings() == nullptr) return;
  set(settings(), "gtk-enable-animations", 0, static_cast<void*>(nullptr));
}

}  // namespace warpline
