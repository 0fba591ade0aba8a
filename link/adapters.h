#pragma once

#include "link/beamseek.h"

namespace warpline {

// The network adapters of this machine as the search library takes them: those in operation,
// loopback left out, at most kMostSearchAdapters.
csAdapterList LocalAdapters();

}  // namespace warpline
