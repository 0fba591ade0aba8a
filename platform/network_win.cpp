#include <winsock2.h>
// The network's own header builds on the one above.
#include <iphlpapi.h>

#include <cstring>

#include "platform/network.h"

namespace warpline {

std::vector<IPv4Address> LocalIPv4Addresses() {
  ULONG size = 0;
  ::GetAdaptersAddresses(AF_INET, 0, nullptr, nullptr, &size);
  // Aligned as the list needs it; an adapter that comes up in between makes the call fail.
  std::vector<IP_ADAPTER_ADDRESSES> list(size / sizeof(IP_ADAPTER_ADDRESSES) + 1);
  size = static_cast<ULONG>(list.size() * sizeof(IP_ADAPTER_ADDRESSES));
  if (::GetAdaptersAddresses(AF_INET, 0, nullptr, list.data(), &size) != ERROR_SUCCESS) return {};
  std::vector<IPv4Address> addresses;
  for (const IP_ADAPTER_ADDRESSES* adapter = list.data(); adapter; adapter = adapter->Next) {
    if (adapter->OperStatus != IfOperStatusUp) continue;
    if (adapter->IfType == IF_TYPE_SOFTWARE_LOOPBACK) continue;
    for (const auto* entry = adapter->FirstUnicastAddress; entry; entry = entry->Next) {
      sockaddr_in address{};
      std::memcpy(&address, entry->Address.lpSockaddr, sizeof address);
      std::memcpy(addresses.emplace_back().data(), &address.sin_addr, sizeof(IPv4Address));
    }
  }
  return addresses;
}

}  // namespace warpline
