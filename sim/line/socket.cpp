#include "sim/line/socket.h"

#include <algorithm>
#include <memory>
#include <thread>

#include "core/conversions.h"
#include "platform/sockets.h"

namespace warpline {

std::string TextOf(const Endpoint& endpoint) {
  IPv4Address address{};
  for (std::size_t part = 0; part < address.size(); ++part) {
    address[part] = static_cast<std::uint8_t>(endpoint.Address >> (24 - 8 * part));
  }
  return AddressText(address) + ":" + std::to_string(endpoint.Port);
}

}  // namespace warpline

namespace warpline::sim {
namespace {

constexpr std::uint8_t kLoopbackNetwork = 127;

class TcpChannel : public Channel {
 public:
  explicit TcpChannel(SocketHandle socket, const std::atomic<bool>* stopping = nullptr)
      : socket_(socket), stopping_(stopping) {}
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
      const WaitStatus wait =
          WaitForSocket(socket_, Direction::kWrite, std::min(Until(deadline), kStopLookMs));
      const bool stopped = stopping_ != nullptr && *stopping_;
      if (wait == WaitStatus::kFailed || stopped) return ChannelStatus::kClosed;
      if (wait == WaitStatus::kTimedOut && Clock::now() >= deadline) {
        return ChannelStatus::kTimedOut;
      }
    }
    return ChannelStatus::kOk;
  }

 private:
  SocketHandle socket_;
  const std::atomic<bool>* stopping_;
};

}  // namespace

std::optional<std::uint32_t> LoopbackAddress(std::string_view text) {
  if (text == "localhost") return Endpoint{}.Address;
  const std::optional<IPv4Address> address = AddressOf(text);
  if (!address || address->front() != kLoopbackNetwork) return std::nullopt;
  std::uint32_t number = 0;
  for (const std::uint8_t part : *address) number = number << 8 | part;
  return number;
}

std::optional<std::uint16_t> PortNumber(std::string_view text) {
  return WholeNumber<std::uint16_t>(text, 0, 65535);
}

std::unique_ptr<Listener> Listener::Open(const Endpoint& endpoint, NamedText& reason) {
  const SocketHandle socket = StartSockets() ? NewSocket() : kNoSocket;
  if (socket == kNoSocket) {
    reason = {"NoSocket"};
    return nullptr;
  }
  std::unique_ptr<Listener> listener(new Listener(socket));
  if (!BindAndListen(socket, endpoint)) {
    reason = {"CannotListen", {TextOf(endpoint)}};
    return nullptr;
  }
  listener->where_ = {endpoint.Address, BoundPort(socket)};
  return listener;
}

Listener::~Listener() {
  CloseSocket(socket_);
}

std::unique_ptr<Channel> Listener::Accept(milliseconds time_out,
                                          const std::atomic<bool>& stopping) {
  if (WaitForSocket(socket_, Direction::kRead, time_out) != WaitStatus::kReady) return nullptr;
  const SocketHandle socket = AcceptSocket(socket_);
  if (socket == kNoSocket) {
    // Without a handle for it the caller stays in the queue; asking again at once would be a spin.
    std::this_thread::sleep_for(time_out);
    return nullptr;
  }
  return std::make_unique<TcpChannel>(socket, &stopping);
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
