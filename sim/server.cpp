#include "sim/server.h"

#include <algorithm>
#include <array>

namespace warpline::sim {
namespace {

bool IsRefusal(const Bytes& reply) {
  return reply.size() > kPayloadStart + 1 && reply[kPayloadStart] == kRefused;
}

}  // namespace

bool Server::Listen(const Endpoint& endpoint, std::string& reason) {
  listener_ = Listener::Open(endpoint, reason);
  if (!listener_) return false;
  where_ = listener_->Where();
  accept_thread_ = std::thread([this] { AcceptLinks(); });
  return true;
}

bool Server::OfferSerial(const std::filesystem::path& path, std::string& reason) {
  terminal_ = PseudoTerminal::Create(path, reason);
  if (!terminal_) return false;
  serial_thread_ = std::thread([this] { ServeSerial(); });
  return true;
}

void Server::Stop() {
  stopping_ = true;
  if (accept_thread_.joinable()) accept_thread_.join();
  if (serial_thread_.joinable()) serial_thread_.join();
  for (Link& link : links_) link.thread.join();
  links_.clear();
  listener_.reset();
  terminal_.reset();
}

void Server::AcceptLinks() {
  while (!stopping_) {
    std::unique_ptr<Channel> channel = listener_->Accept(kStopCheckMs);
    JoinEnded();
    if (!channel || links_.size() >= kMaxLinks) continue;
    Link& link = links_.emplace_back();
    link.channel = std::move(channel);
    // Numbered here and not by the link's own thread, so that the newest is the last accepted one.
    link.thread = std::thread([this, &link, number = station_.OpenLink()] {
      ServeLink(*link.channel, number);
      link.channel.reset();
      link.done = true;
    });
  }
}

void Server::JoinEnded() {
  links_.remove_if([](Link& link) {
    if (!link.done) return false;
    link.thread.join();
    return true;
  });
}

void Server::ServeSerial() {
  while (!stopping_) {
    if (terminal_->WaitForPeer(kStopCheckMs)) ServeLink(terminal_->Line(), station_.OpenLink());
  }
}

void Server::ServeLink(Channel& channel, int link) {
  FrameReader reader;
  std::array<std::uint8_t, 4096> buffer{};
  Clock::time_point last_byte = Clock::now();
  while (!stopping_) {
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
  station_.CloseLink(link);
}

// False when the link has to be closed.
bool Server::AnswerFrames(Channel& channel, int link, FrameReader& reader) {
  while (const std::optional<Bytes> frame = reader.Next()) {
    const Outgoing outgoing = station_.Exchange(link, *frame);
    // What stands behind a frame that makes no sense cannot be trusted to be the start of another.
    if (IsRefusal(outgoing.Reply)) reader.Clear();
    if (!Deliver(channel, outgoing)) return false;
  }
  return true;
}

bool Server::Deliver(Channel& channel, const Outgoing& outgoing) {
  if (!Pause(outgoing.Delay)) return false;
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
