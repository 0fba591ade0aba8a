#include "link/adapters.h"

#include <algorithm>

#include "platform/network.h"

namespace warpline {

csAdapterList LocalAdapters() {
  csAdapterList list{};
  for (const IPv4Address& address : LocalIPv4Addresses()) {
    if (list.iAdapterNum == kMostSearchAdapters) break;
    std::copy(address.begin(), address.end(), list.Adapter[list.iAdapterNum++].ucIP);
  }
  return list;
}

}  // namespace warpline
