#pragma once

#include <string>
#include <string_view>

#include "core/conversions.h"
#include "sim/wire.h"

// Frames as literal hex.

namespace warpline::sim {

inline Bytes FromHex(std::string_view text) {
  Bytes bytes(text.size() / 2);
  HexTextToBytes(bytes, 0, text);
  return bytes;
}

inline std::string ToHex(ByteView bytes) {
  std::string text;
  for (const std::uint8_t byte : bytes) text += HexTextMsbFirst(byte, 2);
  return text;
}

}  // namespace warpline::sim
