#pragma once

#include <wx/toplevel.h>

namespace warpline {

// A window that got its client size before it is shown is painted once, not twice. To be called
// right before it is shown, and after its size is set.
void PaintOnce(wxTopLevelWindow& window);

}  // namespace warpline
