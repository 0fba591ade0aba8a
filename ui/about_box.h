#pragma once

#include "core/LSSglobal.h"

class wxWindow;

namespace warpline {

// The about box: title, version, what the program is for, who made it. Returns when it was closed.
void ShowAboutBox(wxWindow* owner, const LSSglobal& global);

}  // namespace warpline
