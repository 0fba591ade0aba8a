#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "core/conversions.h"
#include "model/registers.h"
#include "sim/line/wire.h"
#include "sim/station/station.h"

// Frames as literal hex.

namespace warpline::sim {

inline constexpr const char* kProbe = "01DF000000E0";
inline constexpr const char* kClear = "01DF0000020000E2";
inline constexpr const char* kShow = "01DF0000020100E3";
inline constexpr const char* kStore = "01DF0000021200F4";
inline constexpr const char* kWriteScroll = "01DF00000608000200334467";  // horizontal, 3344
inline constexpr const char* kMode0 = "01DE0000020000E1";
inline constexpr const char* kMode1 = "01DE0000020100E2";
inline constexpr const char* kPrepare = "021A000002020121";
inline constexpr const char* kClass = "00850000010086";
inline constexpr const char* kRunning = "7F5700000101D8";
inline constexpr const char* kInput7 = "7F570000050407000000E6";
inline constexpr const char* kAcceptedReply = "21DF0000010001";
inline constexpr const char* kRefusedReply = "21DF0000010203";

inline Bytes FromHex(std::string_view text) {
  Bytes bytes(text.size() / 2);
  HexTextToBytes(bytes, 0, text);
  return bytes;
}

inline std::string ToHex(ByteView bytes) {
  return HexOf(bytes);
}

// A station and a link to it that takes frames as hex.
struct LinkedStation {
  explicit LinkedStation(StationSetup setup = {}) : station(std::move(setup)) {}
  std::string Send(std::string_view hex) {
    return ToHex(station.Exchange(link, FromHex(hex)).Reply);
  }
  std::string Scroll() { return station.Snapshot().Working[kHorizontal][kScroll]; }

  Station station;
  int link = station.OpenLink();
};

}  // namespace warpline::sim
