#include "sim/window/projector_app.h"
#include "sim/window/window.h"

namespace warpline::sim {

bool RunWindow(const WindowRequest& request) {
  return RunApplication(request);
}

}  // namespace warpline::sim
