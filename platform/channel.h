#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <span>

// A two-way stream of bytes with time limits: a TCP connection, a serial port, a pseudo-terminal.

namespace warpline {

using ByteView = std::span<const std::uint8_t>;
using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

// Time left until a deadline, never below 0.
inline milliseconds Until(Clock::time_point deadline) {
  const auto left = std::chrono::ceil<milliseconds>(deadline - Clock::now());
  return left > milliseconds(0) ? left : milliseconds(0);
}

enum class ChannelStatus { kOk, kTimedOut, kClosed };

struct ReadResult {
  ChannelStatus Status = ChannelStatus::kOk;
  std::size_t Count = 0;  // bytes read, at least 1 when the status is kOk
};

class Channel {
 public:
  virtual ~Channel() = default;

  // Waits until there is at least one byte or the time is over (0: only what is there now).
  virtual ReadResult Read(std::span<std::uint8_t> buffer, milliseconds time_out) = 0;

  // Sends all bytes. kTimedOut: not all of them could be handed over in time.
  virtual ChannelStatus Write(ByteView bytes, milliseconds time_out) = 0;
};

}  // namespace warpline
