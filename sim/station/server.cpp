#include "sim/station/server.h"

#include <algorithm>
#include <array>
#include <system_error>
#include <utility>

#include "platform/files.h"

namespace warpline::sim {
namespace {

bool IsRefusal(const Bytes& reply) {
  return reply.size() > kPayloadStart + 1 && reply[kPayloadStart] == kRefused;
}

// People count links from 1.
std::uint64_t RecordedNumber(int link) {
  return static_cast<std::uint64_t>(link) + 1;
}

NamedText ReasonOf(TerminalStatus status, const std::filesystem::path& path,
                   std::error_code error) {
  if (status == TerminalStatus::kUnknown) return {"NoPseudoTerminals"};
  if (status == TerminalStatus::kNone) return {"NoPseudoTerminal"};
  return {"CannotMakeSerial", {Utf8Of(path), SystemErrorText(error)}};
}

// A caller's channel that counts as closed once nothing has passed for kIdleLimitMs: who only stays
// connected must not keep others out.
class IdleLimitedChannel : public Channel {
 public:
  IdleLimitedChannel(std::unique_ptr<Channel> channel, const Station& station)
      : channel_(std::move(channel)), station_(station), last_used_(station.Now()) {}

  ReadResult Read(std::span<std::uint8_t> buffer, milliseconds time_out) override {
    const ReadResult read = channel_->Read(buffer, time_out);
    const Clock::time_point now = station_.Now();
    if (read.Status == ChannelStatus::kOk) last_used_ = now;
    if (now - last_used_ >= kIdleLimitMs) return {ChannelStatus::kClosed, 0};
    return read;
  }

  ChannelStatus Write(ByteView bytes, milliseconds time_out) override {
    const ChannelStatus status = channel_->Write(bytes, time_out);
    last_used_ = station_.Now();
    return status;
  }

 private:
  std::unique_ptr<Channel> channel_;
  const Station& station_;
  Clock::time_point last_used_;
};

}  // namespace

bool Server::Listen(const Endpoint& endpoint, NamedText& reason) {
  listener_ = Listener::Open(endpoint, reason);
  if (!listener_) return false;
  where_ = listener_->Where();
  if (station_.RefusesEveryLink()) listener_.reset();
  accept_thread_ = std::thread([this] { AcceptLinks(); });
  return true;
}

bool Server::OfferSerial(const std::filesystem::path& path, bool fast, NamedText& reason) {
  TerminalStatus status{};
  std::error_code error;
  terminal_ = PseudoTerminal::Create(path, status, error);
  if (!terminal_) reason = ReasonOf(status, path, error);
  if (!terminal_) return false;
  fast_serial_ = fast;
  serial_thread_ = std::thread([this] { ServeSerial(); });
  return true;
}

void Server::Stop() {
  stopping_ = true;
  if (accept_thread_.joinable()) accept_thread_.join();
  if (serial_thread_.joinable()) serial_thread_.join();
  for (ServedLink& link : links_) link.thread.join();
  links_.clear();
  listener_.reset();
  terminal_.reset();
}

void Server::AcceptLinks() {
  while (!stopping_) {
    std::unique_ptr<Channel> channel = NextCaller();
    JoinEnded();
    if (!channel || links_.size() >= kMaxLinks) continue;
    // Numbered here and not by the link's own thread, so that the newest is the last accepted one.
    const Reception reception = station_.Receive();
    if (reception.How != Welcome::kTurnedAway) StartLink(std::move(channel), reception);
  }
}

// While every caller is refused there is no listener, as the system itself refuses best.
std::unique_ptr<Channel> Server::NextCaller() {
  NamedText reason;
  if (station_.RefusesEveryLink()) {
    listener_.reset();
  } else if (!listener_) {
    listener_ = Listener::Open(where_, reason);
  }
  if (listener_) return listener_->Accept(kStopCheckMs, stopping_);
  std::this_thread::sleep_for(kStopCheckMs);
  return nullptr;
}

void Server::StartLink(std::unique_ptr<Channel> channel, const Reception& reception) {
  ServedLink& link = links_.emplace_back();
  link.channel = std::make_unique<IdleLimitedChannel>(std::move(channel), station_);
  link.thread = std::thread([this, &link, reception] {
    if (reception.How == Welcome::kServed) ServeLink(*link.channel, reception.Link);
    if (reception.How == Welcome::kIgnored) IgnoreLink(*link.channel);
    link.channel.reset();
    link.done = true;
  });
}

void Server::IgnoreLink(Channel& channel) {
  std::array<std::uint8_t, 4096> dropped{};
  while (!stopping_ && channel.Read(dropped, kStopCheckMs).Status != ChannelStatus::kClosed) {
  }
}

void Server::JoinEnded() {
  links_.remove_if([](ServedLink& link) {
    if (!link.done) return false;
    link.thread.join();
    return true;
  });
}

void Server::ServeSerial() {
  while (!stopping_) {
    if (!terminal_->WaitForPeer(kStopCheckMs)) continue;
    SerialLine line(*terminal_, fast_serial_, stopping_);
    ServeLink(line, station_.OpenLink());
  }
}

void Server::ServeLink(Channel& channel, int link) {
  FrameReader reader;
  if (recorder_ != nullptr) recorder_->Opened(RecordedNumber(link));
  std::array<std::uint8_t, 4096> buffer{};
  Clock::time_point last_byte = Clock::now();
  while (!stopping_ && station_.IsOpen(link)) {
    const ReadResult read = channel.Read(buffer, kStopCheckMs);
    if (read.Status == ChannelStatus::kClosed) break;
    if (read.Status == ChannelStatus::kTimedOut) {
      if (Clock::now() - last_byte > kFrameGapMs) reader.Clear();
      continue;
    }
    last_byte = Clock::now();
    reader.Append(ByteView(buffer).first(read.Count));
    if (!AnswerFrames(channel, link, reader)) break;
  }
  if (recorder_ != nullptr) recorder_->Closed(RecordedNumber(link));
  station_.CloseLink(link);
}

// False when the link has to be closed.
bool Server::AnswerFrames(Channel& channel, int link, FrameReader& reader) {
  while (const std::optional<Bytes> frame = reader.Next()) {
    if (recorder_ != nullptr) recorder_->Request(RecordedNumber(link), *frame);
    const Outgoing outgoing = station_.Exchange(link, *frame);
    // What stands behind a frame that makes no sense cannot be trusted to be the start of another.
    if (IsRefusal(outgoing.Reply)) reader.Clear();
    const auto record = [&] {
      if (recorder_ != nullptr) recorder_->Reply(RecordedNumber(link), *frame, outgoing.Reply);
    };
    const bool goes_on = Deliver(channel, outgoing, record);
    station_.WriteDuePhoto();
    if (!goes_on) return false;
  }
  return true;
}

bool Server::Deliver(Channel& channel, const Outgoing& outgoing,
                     const std::function<void()>& before_reply) {
  if (!Pause(outgoing.Delay)) return false;
  before_reply();
  ByteView rest = outgoing.Reply;
  while (!rest.empty()) {
    const std::size_t count = outgoing.ByteByByte ? 1 : rest.size();
    if (channel.Write(rest.first(count), kWriteLimitMs) != ChannelStatus::kOk) return false;
    rest = rest.subspan(count);
    if (outgoing.ByteByByte && !Pause(kSlowByteMs)) return false;
  }
  return !outgoing.CutAfter;
}

// False when the server stops meanwhile.
bool Server::Pause(milliseconds time) {
  const Clock::time_point deadline = Clock::now() + time;
  while (!stopping_ && Clock::now() < deadline) {
    std::this_thread::sleep_for(std::min(Until(deadline), kStopCheckMs));
  }
  return !stopping_;
}

}  // namespace warpline::sim
