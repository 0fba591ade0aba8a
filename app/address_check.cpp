#include "app/address_check.h"

#include <algorithm>
#include <array>
#include <optional>

#include "core/conversions.h"

namespace warpline {
namespace {

struct PartRange {
  int low;
  int high;
};

constexpr std::array<PartRange, 4> kPartRanges{{{1, 223}, {0, 255}, {0, 255}, {1, 254}}};
constexpr IPv4Address kOwnMachine{127, 0, 0, 1};

}  // namespace

bool IsAddressCharacter(char c) {
  return IsDigit(c) || c == '.';
}

bool IsValidProjectorAddress(std::string_view text) {
  const std::optional<IPv4Address> address = AddressOf(text);
  if (!address || *address == kOwnMachine) return false;
  return std::equal(
      address->begin(), address->end(), kPartRanges.begin(),
      [](int value, PartRange range) { return range.low <= value && value <= range.high; });
}

}  // namespace warpline
