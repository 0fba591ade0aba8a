#include "sim/window/projector_app.h"
#include "sim/window/window.h"

extern "C" __attribute__((visibility("default"))) bool WarplineProjectorWindow(
    const warpline::sim::WindowRequest* request) {
  return warpline::sim::RunApplication(*request);
}
