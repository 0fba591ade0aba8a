#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace warpline {

// An IPv4 address as it is written, the first number first.
using IPv4Address = std::array<std::uint8_t, 4>;

// The addresses of the network adapters that are in operation, loopback left out. Empty when there
// are none or the system does not tell.
std::vector<IPv4Address> LocalIPv4Addresses();

}  // namespace warpline
