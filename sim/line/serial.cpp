#include "sim/line/serial.h"

#include <algorithm>
#include <thread>

#include "sim/line/socket.h"

namespace warpline::sim {
namespace {

constexpr std::size_t kBytesAtOnce = 16;  // so that no call sleeps for long

}  // namespace

ReadResult SerialLine::Read(std::span<std::uint8_t> buffer, milliseconds time_out) {
  const std::size_t most = fast_ ? buffer.size() : std::min(buffer.size(), kBytesAtOnce);
  const ReadResult read = terminal_.Line().Read(buffer.first(most), time_out);
  if (read.Status == ChannelStatus::kOk) Pass(read.Count, in_free_);
  return read;
}

ChannelStatus SerialLine::Write(ByteView bytes, milliseconds time_out) {
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (i % kBytesAtOnce == 0) Pass(std::min(bytes.size() - i, kBytesAtOnce), out_free_);
    const ChannelStatus status = WriteByte(bytes.subspan(i, 1), Clock::now() + time_out);
    if (status != ChannelStatus::kOk) return status;
  }
  return ChannelStatus::kOk;
}

// A single byte is gone or not, so that it can be tried again when it could not be handed over.
ChannelStatus SerialLine::WriteByte(ByteView byte, Clock::time_point deadline) {
  while (!stopping_) {
    const milliseconds left = Until(deadline);
    const ChannelStatus status = terminal_.Line().Write(byte, std::min(left, kStopLookMs));
    if (status != ChannelStatus::kTimedOut || left <= kStopLookMs) return status;
  }
  return ChannelStatus::kClosed;
}

// Returns when the line has carried that many bytes more.
void SerialLine::Pass(std::size_t bytes, Clock::time_point& free) {
  const int speed = fast_ ? 0 : terminal_.Speed();
  if (speed <= 0) return;
  free = std::max(free, Clock::now()) + LineTime(bytes, speed);
  std::this_thread::sleep_until(free);
}

}  // namespace warpline::sim
