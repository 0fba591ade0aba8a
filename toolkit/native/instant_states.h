#pragma once

// A control that cannot be used for a while has to look so at once: while the program waits for the
// projector, nothing could paint the steps of a slow change.

namespace warpline {

// From now on controls change their looks at once. Needs a display.
void ShowStatesAtOnce();

}  // namespace warpline
