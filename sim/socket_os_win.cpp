#include <winsock2.h>
#include <ws2tcpip.h>

#include <algorithm>
#include <limits>

#include "sim/socket_os.h"

namespace warpline::sim {
namespace {

SOCKET Native(SocketHandle socket) {
  return static_cast<SOCKET>(socket);
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

SocketHandle Prepared(SOCKET socket) {
  if (socket == INVALID_SOCKET) return kNoSocket;
  u_long non_blocking = 1;
  const BOOL on = TRUE;
  ::ioctlsocket(socket, FIONBIO, &non_blocking);
  ::SetHandleInformation(reinterpret_cast<HANDLE>(socket), HANDLE_FLAG_INHERIT, 0);
  ::setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, reinterpret_cast<const char*>(&on), sizeof on);
  return static_cast<SocketHandle>(socket);
}

std::ptrdiff_t Moved(int count) {
  if (count >= 0) return count;
  return ::WSAGetLastError() == WSAEWOULDBLOCK ? 0 : -1;
}

}  // namespace

bool StartSockets() {
  WSADATA data{};
  return ::WSAStartup(MAKEWORD(2, 2), &data) == 0;
}

SocketHandle NewSocket() {
  return Prepared(::socket(AF_INET, SOCK_STREAM, IPPROTO_TCP));
}

void CloseSocket(SocketHandle socket) {
  ::closesocket(Native(socket));
}

WaitStatus WaitForSocket(SocketHandle socket, Direction direction, milliseconds time_out) {
  WSAPOLLFD entry{};
  entry.fd = Native(socket);
  entry.events = direction == Direction::kRead ? POLLRDNORM : POLLWRNORM;
  const auto wait = std::min<milliseconds::rep>(time_out.count(), std::numeric_limits<int>::max());
  const int ready = ::WSAPoll(&entry, 1, static_cast<int>(wait));
  if (ready > 0) return WaitStatus::kReady;
  return ready == 0 ? WaitStatus::kTimedOut : WaitStatus::kFailed;
}

std::ptrdiff_t SendSome(SocketHandle socket, ByteView bytes) {
  return Moved(::send(Native(socket), reinterpret_cast<const char*>(bytes.data()),
                      static_cast<int>(bytes.size()), 0));
}

std::ptrdiff_t ReceiveSome(SocketHandle socket, std::span<std::uint8_t> buffer) {
  const int count = ::recv(Native(socket), reinterpret_cast<char*>(buffer.data()),
                           static_cast<int>(buffer.size()), 0);
  return count == 0 ? -1 : Moved(count);
}

bool BindAndListen(SocketHandle socket, const Endpoint& endpoint) {
  // Without this, another program could listen on the same port at the same time.
  const BOOL on = TRUE;
  ::setsockopt(Native(socket), SOL_SOCKET, SO_EXCLUSIVEADDRUSE, reinterpret_cast<const char*>(&on),
               sizeof on);
  const sockaddr_in address = AddressOf(endpoint);
  return ::bind(Native(socket), Generic(address), sizeof address) == 0 &&
         ::listen(Native(socket), SOMAXCONN) == 0;
}

std::uint16_t BoundPort(SocketHandle socket) {
  sockaddr_in address{};
  int size = sizeof address;
  ::getsockname(Native(socket), reinterpret_cast<sockaddr*>(&address), &size);
  return ntohs(address.sin_port);
}

SocketHandle AcceptSocket(SocketHandle listener) {
  return Prepared(::accept(Native(listener), nullptr, nullptr));
}

bool BeginConnect(SocketHandle socket, const Endpoint& endpoint) {
  const sockaddr_in address = AddressOf(endpoint);
  return ::connect(Native(socket), Generic(address), sizeof address) == 0 ||
         ::WSAGetLastError() == WSAEWOULDBLOCK;
}

bool IsConnected(SocketHandle socket) {
  int error = 0;
  int size = sizeof error;
  return ::getsockopt(Native(socket), SOL_SOCKET, SO_ERROR, reinterpret_cast<char*>(&error),
                      &size) == 0 &&
         error == 0;
}

}  // namespace warpline::sim
