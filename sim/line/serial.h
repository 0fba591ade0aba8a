#pragma once

#include "platform/serial_port.h"

namespace warpline::sim {

// The time that bytes take over a line of 8 data bits, no parity and one stop bit.
constexpr std::chrono::microseconds LineTime(std::size_t bytes, int speed) {
  return std::chrono::microseconds(static_cast<std::int64_t>(bytes) * 10 * 1'000'000 / speed);
}

// A line that carries bytes at the speed a pseudo-terminal's program has set, both ways.
class PacedLine : public Channel {
 public:
  explicit PacedLine(PseudoTerminal& terminal) : terminal_(terminal) {}
  ReadResult Read(std::span<std::uint8_t> buffer, milliseconds time_out) override;
  ChannelStatus Write(ByteView bytes, milliseconds time_out) override;

 private:
  void Pass(std::size_t bytes, Clock::time_point& free);

  PseudoTerminal& terminal_;
  Clock::time_point in_free_{};  // when the bytes so far have passed
  Clock::time_point out_free_{};
};

}  // namespace warpline::sim
