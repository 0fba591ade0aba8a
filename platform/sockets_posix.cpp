#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <limits>

#include "platform/sockets.h"

namespace warpline {
namespace {

int DescriptorOf(SocketHandle socket) {
  return static_cast<int>(socket);
}

bool SocketWouldWait() {
  return errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR;
}

sockaddr_in AddressOf(const Endpoint& endpoint) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(endpoint.Port);
  address.sin_addr.s_addr = htonl(endpoint.Address);
  return address;
}

const sockaddr* Generic(const sockaddr_in& address) {
  return reinterpret_cast<const sockaddr*>(&address);
}

SocketHandle Prepared(int descriptor) {
  if (descriptor < 0) return kNoSocket;
  ::fcntl(descriptor, F_SETFL, ::fcntl(descriptor, F_GETFL) | O_NONBLOCK);
  ::fcntl(descriptor, F_SETFD, FD_CLOEXEC);
  return descriptor;
}

SocketHandle PreparedTcp(int descriptor) {
  const int on = 1;
  ::setsockopt(descriptor, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
  return Prepared(descriptor);
}

std::ptrdiff_t Moved(ssize_t count) {
  if (count >= 0) return count;
  return SocketWouldWait() ? 0 : -1;
}

}  // namespace

bool StartSockets() {
  return true;
}

SocketHandle NewSocket() {
  return PreparedTcp(::socket(AF_INET, SOCK_STREAM, 0));
}

SocketHandle NewDatagramSocket() {
  return Prepared(::socket(AF_INET, SOCK_DGRAM, 0));
}

void CloseSocket(SocketHandle socket) {
  ::close(DescriptorOf(socket));
}

WaitStatus WaitForSocket(SocketHandle socket, Direction direction, milliseconds time_out) {
  pollfd entry{DescriptorOf(socket),
               static_cast<short>(direction == Direction::kRead ? POLLIN : POLLOUT), 0};
  const auto wait = std::min<milliseconds::rep>(time_out.count(), std::numeric_limits<int>::max());
  const int ready = ::poll(&entry, 1, static_cast<int>(wait));
  if (ready > 0) return WaitStatus::kReady;
  return ready == 0 || errno == EINTR ? WaitStatus::kTimedOut : WaitStatus::kFailed;
}

std::ptrdiff_t SendSome(SocketHandle socket, ByteView bytes) {
  return Moved(::send(DescriptorOf(socket), bytes.data(), bytes.size(), MSG_NOSIGNAL));
}

std::ptrdiff_t ReceiveSome(SocketHandle socket, std::span<std::uint8_t> buffer) {
  const ssize_t count = ::recv(DescriptorOf(socket), buffer.data(), buffer.size(), 0);
  return count == 0 ? -1 : Moved(count);
}

bool BindSocket(SocketHandle socket, const Endpoint& place) {
  const sockaddr_in address = AddressOf(place);
  return ::bind(DescriptorOf(socket), Generic(address), sizeof address) == 0;
}

bool BindAndListen(SocketHandle socket, const Endpoint& endpoint) {
  const int on = 1;
  ::setsockopt(DescriptorOf(socket), SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
  return BindSocket(socket, endpoint) && ::listen(DescriptorOf(socket), SOMAXCONN) == 0;
}

std::uint16_t BoundPort(SocketHandle socket) {
  sockaddr_in address{};
  socklen_t size = sizeof address;
  ::getsockname(DescriptorOf(socket), reinterpret_cast<sockaddr*>(&address), &size);
  return ntohs(address.sin_port);
}

SocketHandle AcceptSocket(SocketHandle listener) {
  return PreparedTcp(::accept(DescriptorOf(listener), nullptr, nullptr));
}

bool BeginConnect(SocketHandle socket, const Endpoint& endpoint) {
  const sockaddr_in address = AddressOf(endpoint);
  return ::connect(DescriptorOf(socket), Generic(address), sizeof address) == 0 ||
         errno == EINPROGRESS;
}

bool IsConnected(SocketHandle socket) {
  int error = 0;
  socklen_t size = sizeof error;
  return ::getsockopt(DescriptorOf(socket), SOL_SOCKET, SO_ERROR, &error, &size) == 0 && error == 0;
}

void SendDatagram(SocketHandle socket, ByteView datagram, const Endpoint& to) {
  const sockaddr_in address = AddressOf(to);
  ::sendto(DescriptorOf(socket), datagram.data(), datagram.size(), MSG_NOSIGNAL, Generic(address),
           sizeof address);
}

std::ptrdiff_t ReceiveDatagram(SocketHandle socket, std::span<std::uint8_t> buffer,
                               Endpoint& from) {
  sockaddr_in address{};
  socklen_t size = sizeof address;
  const ssize_t count = ::recvfrom(DescriptorOf(socket), buffer.data(), buffer.size(), 0,
                                   reinterpret_cast<sockaddr*>(&address), &size);
  from = {ntohl(address.sin_addr.s_addr), ntohs(address.sin_port)};
  return count;
}

}  // namespace warpline
