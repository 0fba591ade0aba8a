#include "toolkit/native/instant_states.h"

namespace warpline {

// They do so by themselves.
void ShowStatesAtOnce() {}

}  // namespace warpline
