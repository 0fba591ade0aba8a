#pragma once

#include <vector>

#include "link/beamseek.h"
#include "platform/network.h"

namespace warpline {

// Network adapters as the search library takes them, at most kMostSearchAdapters.
csAdapterList AdapterListOf(const std::vector<IPv4Address>& addresses);

}  // namespace warpline
