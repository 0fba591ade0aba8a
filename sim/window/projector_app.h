#pragma once

#include "sim/window/window.h"

namespace warpline::sim {

// Starts the toolkit, shows the window and returns when it is closed; false without a display.
bool RunApplication(const WindowRequest& request);

}  // namespace warpline::sim
