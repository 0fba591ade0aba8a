#pragma once

#include <functional>

#include "core/correction.h"

class wxWindow;

// The dialogs that the main window opens. An empty function keeps its command unavailable.

namespace warpline {

struct MainDialogs {
  std::function<void(wxWindow* owner, Axis axis)> curve_editor;  // corre_edit
  std::function<void(wxWindow* owner)> communication_settings;   // menu_opt_setting, detailed mode
  std::function<void(wxWindow* owner)> projector_search;         // menu_opt_setting, simple mode
  std::function<void(wxWindow* owner)> projector_mode;           // menu_opt_pjmode
};

}  // namespace warpline
