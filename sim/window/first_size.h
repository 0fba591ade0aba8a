#pragma once

#include <wx/gdicmn.h>

namespace warpline::sim {

// How large the projector's window begins in the lower left corner of a screen whose usable part is
// so large (all in DIP, with the frame around them): so that it covers none of the tool's windows
// while these stand in the upper left corner, the preview beside the main window, from 1366x728 on.
wxSize FirstSize(const wxSize& screen);

}  // namespace warpline::sim
