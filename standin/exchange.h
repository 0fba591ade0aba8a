#pragma once

#include <cstdint>
#include <memory>
#include <utility>

#include "link/beamlink.h"
#include "platform/channel.h"
#include "sim/line/wire.h"

// One request and its one reply over a channel, as one who asks the projector sees them.

namespace warpline::sim {

// Time that a reply may take when nobody sets one.
inline constexpr milliseconds kDefaultAckTimeOutMs{3000};

class Requester {
 public:
  // stale: bytes from before may still be on their way (a serial line).
  Requester(std::unique_ptr<Channel> channel, bool stale)
      : channel_(std::move(channel)), stale_(stale) {}

  // Sends the request and collects its reply, all within the time given. Returns
  //   kBeamlinkOk            a whole reply to this request, its checksum right, and nothing behind
  //   it kBeamlinkNoResponse    not a byte came in time kBeamlinkSendError     the request could
  //   not be sent, or the link was closed before kBeamlinkReceiveError  the reply is short, long,
  //   garbled, another request's, or cut off
  // After a failure the next call first makes sure that nothing overdue is taken for its reply.
  BeamlinkResult Exchange(ByteView request, Bytes& reply, milliseconds time_out);

 private:
  BeamlinkResult Resynchronize(Clock::time_point deadline);
  BeamlinkResult Send(ByteView request, Clock::time_point deadline);
  BeamlinkResult Collect(ByteView request, Bytes& reply, Clock::time_point deadline);
  ReadResult ReadMore(Bytes& received, milliseconds time_out);
  void Drain();

  std::unique_ptr<Channel> channel_;
  bool stale_;
  bool closed_ = false;
  std::uint32_t echo_ = 0;
};

}  // namespace warpline::sim
