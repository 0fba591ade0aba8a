#include "toolkit/native/foreground.h"

namespace warpline {

// The window manager decides by itself.
void GiveForegroundAway() {}

}  // namespace warpline
