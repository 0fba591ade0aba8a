#include <ifaddrs.h>
#include <net/if.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <cstring>
#include <memory>

#include "platform/network.h"

namespace warpline {

std::vector<IPv4Address> LocalIPv4Addresses() {
  ifaddrs* first = nullptr;
  if (::getifaddrs(&first) != 0) return {};
  const std::unique_ptr<ifaddrs, decltype(&::freeifaddrs)> owner(first, &::freeifaddrs);
  std::vector<IPv4Address> addresses;
  for (const ifaddrs* entry = first; entry != nullptr; entry = entry->ifa_next) {
    const bool in_operation = (entry->ifa_flags & IFF_UP) != 0;
    const bool loopback = (entry->ifa_flags & IFF_LOOPBACK) != 0;
    if (!in_operation || loopback || entry->ifa_addr == nullptr) continue;
    if (entry->ifa_addr->sa_family != AF_INET) continue;
    sockaddr_in address{};
    std::memcpy(&address, entry->ifa_addr, sizeof address);
    std::memcpy(addresses.emplace_back().data(), &address.sin_addr, sizeof(IPv4Address));
  }
  return addresses;
}

}  // namespace warpline
