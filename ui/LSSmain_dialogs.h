#pragma once

#include <functional>

#include "core/correction.h"

class wxTopLevelWindow;

// The dialogs that the main window opens. An empty function keeps its command unavailable.

namespace warpline {

struct MainDialogs {
  // corre_edit; applied is called whenever the live curve of the axis has changed
  std::function<void(wxTopLevelWindow* owner, Axis axis, const std::function<void()>& applied)>
      curve_editor;
  // menu_opt_setting in detailed mode, and in simple mode
  std::function<void(wxTopLevelWindow* owner)> communication_settings;
  std::function<void(wxTopLevelWindow* owner)> projector_search;
  std::function<void(wxTopLevelWindow* owner)> projector_mode;  // menu_opt_pjmode
};

}  // namespace warpline
