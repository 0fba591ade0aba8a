#pragma once

#include <atomic>

#include "platform/serial_port.h"

namespace warpline::sim {

// The time that bytes take over a line of 8 data bits, no parity and one stop bit.
constexpr std::chrono::microseconds LineTime(std::size_t bytes, int speed) {
  return std::chrono::microseconds(static_cast<std::int64_t>(bytes) * 10 * 1'000'000 / speed);
}

// A pseudo-terminal's line. It carries bytes at the speed that its program has set, both ways, or,
// when fast, as quickly as they can. It writes nothing more, and waits for no reader, once stopping
// is true; that and the terminal must outlive it.
class SerialLine : public Channel {
 public:
  SerialLine(PseudoTerminal& terminal, bool fast, const std::atomic<bool>& stopping)
      : terminal_(terminal), fast_(fast), stopping_(stopping) {}
  ReadResult Read(std::span<std::uint8_t> buffer, milliseconds time_out) override;
  ChannelStatus Write(ByteView bytes, milliseconds time_out) override;

 private:
  void Pass(std::size_t bytes, Clock::time_point& free);
  ChannelStatus WriteByte(ByteView byte, Clock::time_point deadline);

  PseudoTerminal& terminal_;
  bool fast_;
  const std::atomic<bool>& stopping_;
  Clock::time_point in_free_{};  // when the bytes so far have passed
  Clock::time_point out_free_{};
};

}  // namespace warpline::sim
