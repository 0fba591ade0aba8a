#include "link/adapters.h"

#include <algorithm>

namespace warpline {

csAdapterList AdapterListOf(const std::vector<IPv4Address>& addresses) {
  csAdapterList list{};
  for (const IPv4Address& address : addresses) {
    if (list.iAdapterNum == kMostSearchAdapters) break;
    std::copy(address.begin(), address.end(), list.Adapter[list.iAdapterNum++].ucIP);
  }
  return list;
}

}  // namespace warpline
