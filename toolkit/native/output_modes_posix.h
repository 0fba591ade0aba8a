#pragma once

#include <wx/gdicmn.h>

#include <vector>

// What Wayland knows of its outputs and GTK does not tell.

namespace warpline {

// How many pixels each output has, in the order in which the system counts displays, turned as they
// are; empty where the windows do not stand on Wayland.
std::vector<wxSize> WaylandOutputPixels();

}  // namespace warpline
