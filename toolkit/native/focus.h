#pragma once

#include <wx/window.h>

// Where the keyboard's focus is. Under GTK a drop-down list never says that it has the focus,
// because a button inside it has.

namespace warpline {

// The control, or something inside it, is what its window gives the keys to. That window itself
// need not be the active one.
bool HoldsFocus(const wxWindow& control);

}  // namespace warpline
