#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "core/texts.h"
#include "platform/channel.h"
#include "platform/sockets.h"

// TCP over loopback addresses only: nothing of the simulation ever leaves the machine.

namespace warpline {

// "127.0.0.1:7142".
std::string TextOf(const Endpoint& endpoint);

}  // namespace warpline

namespace warpline::sim {

inline constexpr std::uint16_t kDefaultLanPort = 7142;

// Where USBn is served: this and n, on 127.0.0.1.
inline constexpr std::uint16_t kUsbPortBase = 7200;
inline constexpr int kHighestPortNumber = 8;  // of COMn and USBn

// How long one who waits for the other side may leave a stop unnoticed.
inline constexpr milliseconds kStopLookMs{20};

// "localhost" or a dotted address that begins with 127; nothing for every other text.
std::optional<std::uint32_t> LoopbackAddress(std::string_view text);

// A decimal port number 0..65535 without anything around it.
std::optional<std::uint16_t> PortNumber(std::string_view text);

class Listener {
 public:
  // Listens; port 0 takes a free one. On failure null, and the reason.
  static std::unique_ptr<Listener> Open(const Endpoint& endpoint, NamedText& reason);
  ~Listener();
  Listener(const Listener&) = delete;
  Listener& operator=(const Listener&) = delete;

  const Endpoint& Where() const { return where_; }

  // The next connection, null when none came in time. It writes nothing more, and waits for no
  // reader, once stopping is true; that must outlive it.
  std::unique_ptr<Channel> Accept(milliseconds time_out, const std::atomic<bool>& stopping);

 private:
  explicit Listener(std::intptr_t socket) : socket_(socket) {}

  std::intptr_t socket_;
  Endpoint where_;
};

enum class ConnectStatus { kOk, kNoSockets, kNoSocket, kRefused, kWaitFailed };

std::unique_ptr<Channel> ConnectTcp(const Endpoint& endpoint, milliseconds time_out,
                                    ConnectStatus& status);

}  // namespace warpline::sim
