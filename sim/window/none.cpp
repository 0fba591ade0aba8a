#include "sim/window/window.h"

namespace warpline::sim {

bool RunWindow(const WindowRequest&) {
  return false;
}

}  // namespace warpline::sim
