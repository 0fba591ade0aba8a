#pragma once

#include <string_view>

// What the communication settings accept as the projector's address.

namespace warpline {

// Whether an entry field for an address takes the character: "0" to "9" and ".".
bool IsAddressCharacter(char c);

// Whether the text is a dotted IPv4 address that a projector can have: four decimal numbers of
// digits alone, the first 1..223, the second and third 0..255, the fourth 1..254, and not
// 127.0.0.1. Leading zeros do not count.
bool IsValidProjectorAddress(std::string_view text);

}  // namespace warpline
