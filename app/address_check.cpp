#include "app/address_check.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>

namespace warpline {
namespace {

using AddressParts = std::array<int, 4>;

struct PartRange {
  int low;
  int high;
};

constexpr std::array<PartRange, 4> kPartRanges{{{1, 223}, {0, 255}, {0, 255}, {1, 254}}};
constexpr AddressParts kOwnMachine{127, 0, 0, 1};
constexpr int kTooLarge = 256;  // stands for every number above 255, however many digits it has

bool IsDigit(char c) {
  return '0' <= c && c <= '9';
}

std::optional<int> PartValue(std::string_view part) {
  if (part.empty() || !std::all_of(part.begin(), part.end(), IsDigit)) return std::nullopt;
  int value = 0;
  for (const char c : part) value = std::min(value * 10 + (c - '0'), kTooLarge);
  return value;
}

// The numbers between the dots, nothing when there are not exactly four.
std::optional<AddressParts> SplitAddress(std::string_view text) {
  AddressParts parts{};
  for (std::size_t i = 0; i < parts.size(); ++i) {
    const std::size_t dot = text.find('.');
    const bool last = i + 1 == parts.size();
    if ((dot == std::string_view::npos) != last) return std::nullopt;
    const std::optional<int> value = PartValue(text.substr(0, dot));
    if (!value) return std::nullopt;
    parts[i] = *value;
    if (!last) text.remove_prefix(dot + 1);
  }
  return parts;
}

}  // namespace

bool IsAddressCharacter(char c) {
  return IsDigit(c) || c == '.';
}

bool IsValidProjectorAddress(std::string_view text) {
  const std::optional<AddressParts> parts = SplitAddress(text);
  if (!parts || *parts == kOwnMachine) return false;
  return std::equal(
      parts->begin(), parts->end(), kPartRanges.begin(),
      [](int value, PartRange range) { return range.low <= value && value <= range.high; });
}

}  // namespace warpline
