#include "standin/beamseek_window.h"

// A build without a toolkit for the window.

namespace warpline::sim {

// NOLINTNEXTLINE(performance-unnecessary-value-param): a window, where there is one, keeps its host
std::unique_ptr<SelectionWindow> MakeSelectionWindow(SelectionWindowHost, Language) {
  return nullptr;
}

}  // namespace warpline::sim
