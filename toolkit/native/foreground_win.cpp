#include "toolkit/native/foreground.h"

#include <wx/msw/wrapwin.h>

namespace warpline {

void GiveForegroundAway() {
  ::AllowSetForegroundWindow(ASFW_ANY);
}

}  // namespace warpline
