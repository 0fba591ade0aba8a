#pragma once

#include <functional>
#include <optional>
#include <string>

#include "core/texts.h"
#include "picture/camera.h"
#include "sim/station/station.h"

// The projector's window, seen from the program. The toolkit takes its time to be loaded, so where
// it is a shared library the window is a library of its own, loaded only when a window is wanted.

namespace warpline::sim {

struct WindowRequest {
  sim::Station& Station;
  std::string Place;  // where the projector listens, for the title
  warpline::Language Language = warpline::Language::kEnglish;
  std::function<bool()> StopWanted;         // asked now and then; true closes the window
  std::optional<warpline::Wall> Wall = {};  // to begin with, in the wall view; none: panel view
  std::optional<RgbImage> Source = {};  // to begin with, of the panel's size; none: the test card
  std::optional<warpline::Camera> Camera = {};  // that looks at the wall; none: in the audience
};

// Runs until the window is closed. False when there can be no window: this program was built
// without, or there is no display.
bool RunWindow(const WindowRequest& request);

// The name of the library and of its one function, which is RunWindow's like.
inline constexpr const char* kWindowLibrary = "warpline-projector-window";
inline constexpr const char* kWindowFunction = "WarplineProjectorWindow";
using WindowFunction = bool(const WindowRequest*);

}  // namespace warpline::sim
