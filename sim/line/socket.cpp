#include "sim/line/socket.h"

#include <memory>

#include "core/conversions.h"
#include "platform/sockets.h"

namespace warpline {

std::string TextOf(const Endpoint& endpoint) {
  std::string text;
  for (int shift = 24; shift >= 0; shift -= 8) {
    text += std::to_string(endpoint.Address >> shift & 255);
    text += shift > 0 ? '.' : ':';
  }
  return text + std::to_string(endpoint.Port);
}

}  // namespace warpline

namespace warpline::sim {
namespace {

class TcpChannel : public Channel {
 public:
  explicit TcpChannel(SocketHandle socket) : socket_(socket) {}
  ~TcpChannel() override { CloseSocket(socket_); }
  TcpChannel(const TcpChannel&) = delete;
  TcpChannel& operator=(const TcpChannel&) = delete;

  ReadResult Read(std::span<std::uint8_t> buffer, milliseconds time_out) override {
    const WaitStatus wait = WaitForSocket(socket_, Direction::kRead, time_out);
    if (wait == WaitStatus::kTimedOut) return {ChannelStatus::kTimedOut, 0};
    if (wait == WaitStatus::kFailed) return {ChannelStatus::kClosed, 0};
    const std::ptrdiff_t count = ReceiveSome(socket_, buffer);
    if (count < 0) return {ChannelStatus::kClosed, 0};
    if (count == 0) return {ChannelStatus::kTimedOut, 0};
    return {ChannelStatus::kOk, static_cast<std::size_t>(count)};
  }

  ChannelStatus Write(ByteView bytes, milliseconds time_out) override {
    const Clock::time_point deadline = Clock::now() + time_out;
    while (!bytes.empty()) {
      const std::ptrdiff_t count = SendSome(socket_, bytes);
      if (count < 0) return ChannelStatus::kClosed;
      bytes = bytes.subspan(static_cast<std::size_t>(count));
      if (count > 0) continue;
      const WaitStatus wait = WaitForSocket(socket_, Direction::kWrite, Until(deadline));
      if (wait == WaitStatus::kFailed) return ChannelStatus::kClosed;
      if (wait == WaitStatus::kTimedOut && Clock::now() >= deadline) {
        return ChannelStatus::kTimedOut;
      }
    }
    return ChannelStatus::kOk;
  }

 private:
  SocketHandle socket_;
};

}  // namespace

std::optional<std::uint32_t> LoopbackAddress(std::string_view text) {
  if (text == "localhost") return 0x7F000001;
  std::uint32_t address = 0;
  for (int part = 0; part < 4; ++part) {
    const std::size_t end = part < 3 ? text.find('.') : text.size();
    if (end == std::string_view::npos) return std::nullopt;
    const auto value = WholeNumber<std::uint32_t>(text.substr(0, end), 0, 255);
    if (!value) return std::nullopt;
    address = address << 8 | *value;
    if (part < 3) text.remove_prefix(end + 1);
  }
  if (address >> 24 != 127) return std::nullopt;
  return address;
}

std::optional<std::uint16_t> PortNumber(std::string_view text) {
  return WholeNumber<std::uint16_t>(text, 0, 65535);
}

std::unique_ptr<Listener> Listener::Open(const Endpoint& endpoint, std::string& reason) {
  const SocketHandle socket = StartSockets() ? NewSocket() : kNoSocket;
  if (socket == kNoSocket) {
    reason = "The system offers no socket.";
    return nullptr;
  }
  std::unique_ptr<Listener> listener(new Listener(socket));
  if (!BindAndListen(socket, endpoint)) {
    reason = "Cannot listen on " + TextOf(endpoint) + "; another program may use this port.";
    return nullptr;
  }
  listener->where_ = {endpoint.Address, BoundPort(socket)};
  return listener;
}

Listener::~Listener() {
  CloseSocket(socket_);
}

std::unique_ptr<Channel> Listener::Accept(milliseconds time_out) {
  if (WaitForSocket(socket_, Direction::kRead, time_out) != WaitStatus::kReady) return nullptr;
  const SocketHandle socket = AcceptSocket(socket_);
  if (socket == kNoSocket) return nullptr;
  return std::make_unique<TcpChannel>(socket);
}

std::unique_ptr<Channel> ConnectTcp(const Endpoint& endpoint, milliseconds time_out,
                                    ConnectStatus& status) {
  const auto failed = [&status](ConnectStatus reason) {
    status = reason;
    return nullptr;
  };
  if (!StartSockets()) return failed(ConnectStatus::kNoSockets);
  const SocketHandle socket = NewSocket();
  if (socket == kNoSocket) return failed(ConnectStatus::kNoSocket);
  auto channel = std::make_unique<TcpChannel>(socket);
  if (!BeginConnect(socket, endpoint)) return failed(ConnectStatus::kRefused);
  const WaitStatus wait = WaitForSocket(socket, Direction::kWrite, time_out);
  if (wait == WaitStatus::kFailed) return failed(ConnectStatus::kWaitFailed);
  if (wait == WaitStatus::kTimedOut || !IsConnected(socket)) {
    return failed(ConnectStatus::kRefused);
  }
  status = ConnectStatus::kOk;
  return channel;
}

}  // namespace warpline::sim
