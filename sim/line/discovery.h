#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "platform/channel.h"
#include "sim/line/socket.h"
#include "sim/line/wire.h"

// How a simulated projector is found: it answers a small datagram on its own loopback address. Both
// datagrams have a fixed shape, and whatever differs from it is ignored. 16- and 32-bit values
// travel least significant byte first.
//   question: "WLDQ", version (1 byte, 1), number (32 bits, the asker's own)
//   answer:   "WLDA", version (1 byte, 1), the question's number (32 bits), TCP port (16 bits),
//             model class (1 byte), power (1 byte), 1 when it can be chosen or 0 (1 byte), length
//             of the name (1 byte), the name (printable ASCII)

namespace warpline::sim {

// The UDP port of the questions: that number, or the one in the environment variable
// WARPLINE_DISCOVERY_PORT (so that several simulations on one machine do not find each other).
inline constexpr std::uint16_t kDiscoveryPort = 7142;
std::uint16_t DiscoveryPort();

inline constexpr std::size_t kLongestDiscoveryName = 31;

struct DiscoveryAnswer {
  std::uint16_t TcpPort = 0;
  std::uint8_t ModelClass = 0;
  std::uint8_t PowerState = 0;
  bool Selectable = false;
  std::string Name;  // at most kLongestDiscoveryName characters

  bool operator==(const DiscoveryAnswer&) const = default;
};

Bytes MakeQuestion(std::uint32_t number);
Bytes MakeAnswer(std::uint32_t number, const DiscoveryAnswer& answer);

// The number of a question, the answer to the question of that number; nothing for other datagrams.
std::optional<std::uint32_t> ParseQuestion(ByteView datagram);
std::optional<DiscoveryAnswer> ParseAnswer(ByteView datagram, std::uint32_t number);

// Answers questions from another thread for as long as it lives.
class DiscoveryResponder {
 public:
  // Null when that place is taken (or no sockets are to be had). Port 0 takes a free one. What is
  // answered is asked for at every question, from the responder's thread.
  static std::unique_ptr<DiscoveryResponder> Open(const Endpoint& place,
                                                  std::function<DiscoveryAnswer()> answer);
  static std::unique_ptr<DiscoveryResponder> Open(const Endpoint& place, DiscoveryAnswer answer);
  ~DiscoveryResponder();
  DiscoveryResponder(const DiscoveryResponder&) = delete;
  DiscoveryResponder& operator=(const DiscoveryResponder&) = delete;

  const Endpoint& Where() const { return where_; }

 private:
  explicit DiscoveryResponder(std::function<DiscoveryAnswer()> answer)
      : answer_(std::move(answer)) {}
  void Answer();

  std::function<DiscoveryAnswer()> answer_;
  std::intptr_t socket_ = -1;
  Endpoint where_;
  std::atomic<bool> stopping_{false};
  std::thread thread_;
};

// Where to look for projectors, and for how long.
struct DiscoveryRange {
  std::uint32_t First = 0x7F000001;  // 127.0.0.1, host byte order
  std::uint32_t Count = 16;
  std::uint16_t Port = kDiscoveryPort;
  milliseconds Time{500};  // at most; less when all have answered
};

struct DiscoveredProjector {
  std::uint32_t Address = 0;  // host byte order
  DiscoveryAnswer Answer;

  bool operator==(const DiscoveredProjector&) const = default;
};

// The projectors that answered, by address, each once. Ends early when stop becomes true.
std::vector<DiscoveredProjector> DiscoverProjectors(const DiscoveryRange& range,
                                                    const std::atomic<bool>& stop);

}  // namespace warpline::sim
