#include "standin/beamseek_window.h"

// A build without a toolkit for the window.

namespace warpline::sim {

std::unique_ptr<SelectionWindow> MakeSelectionWindow(SelectionWindowHost, Language) {
  return nullptr;
}

}  // namespace warpline::sim
