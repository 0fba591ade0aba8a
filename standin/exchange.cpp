#include "standin/exchange.h"

#include <algorithm>
#include <array>

namespace warpline::sim {
namespace {

bool IsReplyTo(ByteView request, ByteView reply) {
  const auto first = static_cast<std::uint8_t>(request[0] | kReplyBit);
  return reply[0] == first && reply[1] == request[1] && reply[2] == 0;
}

// A reply needs at least its error byte.
bool IsHopeless(ByteView reply) {
  const std::optional<std::size_t> length = AnnouncedLength(reply);
  return length && (*length > kPayloadStart + kMaxPayload + 1 || *length < kPayloadStart + 2 ||
                    *length < reply.size());
}

}  // namespace

BeamlinkResult Requester::Exchange(ByteView request, Bytes& reply, milliseconds time_out) {
  const Clock::time_point deadline = Clock::now() + time_out;
  Drain();
  if (closed_ || request.size() < 2) return kBeamlinkSendError;
  BeamlinkResult result = stale_ ? Resynchronize(deadline) : kBeamlinkOk;
  if (result == kBeamlinkOk) result = Send(request, deadline);
  if (result == kBeamlinkOk) result = Collect(request, reply, deadline);
  stale_ = result != kBeamlinkOk;
  return result;
}

// The projector answers in order: behind the answer to this echo nothing older can follow.
BeamlinkResult Requester::Resynchronize(Clock::time_point deadline) {
  Bytes payload{kEchoOperation};
  AppendWord(payload, ++echo_);
  const Bytes request = MakeFrame(kLibraryHeader, payload);
  payload = {kAccepted};
  AppendWord(payload, echo_);
  const Bytes expected = MakeReply(request, payload);

  if (const BeamlinkResult sent = Send(request, deadline); sent != kBeamlinkOk) return sent;
  Bytes received;
  while (Clock::now() < deadline) {
    if (ReadMore(received, Until(deadline)).Status == ChannelStatus::kClosed) {
      return kBeamlinkReceiveError;
    }
    const auto found =
        std::search(received.begin(), received.end(), expected.begin(), expected.end());
    if (found != received.end()) return kBeamlinkOk;
    const std::size_t kept = std::min(received.size(), expected.size() - 1);
    received.erase(received.begin(), received.end() - static_cast<std::ptrdiff_t>(kept));
  }
  return kBeamlinkNoResponse;
}

BeamlinkResult Requester::Send(ByteView request, Clock::time_point deadline) {
  const ChannelStatus status = channel_->Write(request, Until(deadline));
  closed_ = closed_ || status == ChannelStatus::kClosed;
  return status == ChannelStatus::kOk ? kBeamlinkOk : kBeamlinkSendError;
}

BeamlinkResult Requester::Collect(ByteView request, Bytes& reply, Clock::time_point deadline) {
  reply.clear();
  while (AnnouncedLength(reply) != reply.size()) {
    if (IsHopeless(reply)) return kBeamlinkReceiveError;
    const ChannelStatus status = ReadMore(reply, Until(deadline)).Status;
    if (status == ChannelStatus::kClosed) return kBeamlinkReceiveError;
    if (AnnouncedLength(reply) != reply.size() && Clock::now() >= deadline) {
      return reply.empty() ? kBeamlinkNoResponse : kBeamlinkReceiveError;
    }
  }
  const bool right = !IsHopeless(reply) && IsWholeFrame(reply) && IsReplyTo(request, reply);
  return right ? kBeamlinkOk : kBeamlinkReceiveError;
}

ReadResult Requester::ReadMore(Bytes& received, milliseconds time_out) {
  std::array<std::uint8_t, 2048> buffer{};
  const ReadResult read = channel_->Read(buffer, time_out);
  if (read.Status == ChannelStatus::kOk) {
    const ByteView bytes = ByteView(buffer).first(read.Count);
    received.insert(received.end(), bytes.begin(), bytes.end());
  }
  closed_ = closed_ || read.Status == ChannelStatus::kClosed;
  return read;
}

// Bounded, so that a peer that never stops sending cannot hold the caller here.
void Requester::Drain() {
  static constexpr std::size_t kEnough = 65536;
  Bytes dropped;
  while (!closed_ && dropped.size() < kEnough &&
         ReadMore(dropped, milliseconds(0)).Status == ChannelStatus::kOk) {
    stale_ = true;
  }
}

}  // namespace warpline::sim
