#include "sim/line/serial.h"

#include <algorithm>
#include <thread>

namespace warpline::sim {
namespace {

constexpr std::size_t kBytesAtOnce = 16;  // so that no call sleeps for long

}  // namespace

ReadResult PacedLine::Read(std::span<std::uint8_t> buffer, milliseconds time_out) {
  const ReadResult read =
      terminal_.Line().Read(buffer.first(std::min(buffer.size(), kBytesAtOnce)), time_out);
  if (read.Status == ChannelStatus::kOk) Pass(read.Count, in_free_);
  return read;
}

ChannelStatus PacedLine::Write(ByteView bytes, milliseconds time_out) {
  while (!bytes.empty()) {
    const ByteView some = bytes.first(std::min(bytes.size(), kBytesAtOnce));
    Pass(some.size(), out_free_);
    const ChannelStatus status = terminal_.Line().Write(some, time_out);
    if (status != ChannelStatus::kOk) return status;
    bytes = bytes.subspan(some.size());
  }
  return ChannelStatus::kOk;
}

// Returns when the line has carried that many bytes more.
void PacedLine::Pass(std::size_t bytes, Clock::time_point& free) {
  const int speed = terminal_.Speed();
  if (speed <= 0) return;
  free = std::max(free, Clock::now()) + LineTime(bytes, speed);
  std::this_thread::sleep_until(free);
}

}  // namespace warpline::sim
