#include <winsock2.h>
#include <ws2tcpip.h>

#include <algorithm>
#include <limits>

#include "platform/sockets.h"

namespace warpline {
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

void Switch(SOCKET socket, int level, int option) {
  const BOOL on = TRUE;
  ::setsockopt(socket, level, option, reinterpret_cast<const char*>(&on), sizeof on);
}

SocketHandle Prepared(SOCKET socket) {
  if (socket == INVALID_SOCKET) return kNoSocket;
  u_long non_blocking = 1;
  ::ioctlsocket(socket, FIONBIO, &non_blocking);
  ::SetHandleInformation(reinterpret_cast<HANDLE>(socket), HANDLE_FLAG_INHERIT, 0);
  return static_cast<SocketHandle>(socket);
}

SocketHandle PreparedTcp(SOCKET socket) {
  Switch(socket, IPPROTO_TCP, TCP_NODELAY);
  return Prepared(socket);
}

std::ptrdiff_t ReceiveOnce(SocketHandle socket, std::span<std::uint8_t> buffer, Endpoint& from) {
  sockaddr_in address{};
  int size = sizeof address;
  const int count =
      ::recvfrom(Native(socket), reinterpret_cast<char*>(buffer.data()),
                 static_cast<int>(buffer.size()), 0, reinterpret_cast<sockaddr*>(&address), &size);
  from = {ntohl(address.sin_addr.s_addr), ntohs(address.sin_port)};
  return count;
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
  return PreparedTcp(::socket(AF_INET, SOCK_STREAM, IPPROTO_TCP));
}

SocketHandle NewDatagramSocket() {
  return Prepared(::socket(AF_INET, SOCK_DGRAM, IPPROTO_UDP));
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

// Without the option, another program could take the same place at the same time.
bool BindSocket(SocketHandle socket, const Endpoint& place) {
  Switch(Native(socket), SOL_SOCKET, SO_EXCLUSIVEADDRUSE);
  const sockaddr_in address = AddressOf(place);
  return ::bind(Native(socket), Generic(address), sizeof address) == 0;
}

bool BindAndListen(SocketHandle socket, const Endpoint& endpoint) {
  return BindSocket(socket, endpoint) && ::listen(Native(socket), SOMAXCONN) == 0;
}

std::uint16_t BoundPort(SocketHandle socket) {
  sockaddr_in address{};
  int size = sizeof address;
  ::getsockname(Native(socket), reinterpret_cast<sockaddr*>(&address), &size);
  return ntohs(address.sin_port);
}

SocketHandle AcceptSocket(SocketHandle listener) {
  return PreparedTcp(::accept(Native(listener), nullptr, nullptr));
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

void SendDatagram(SocketHandle socket, ByteView datagram, const Endpoint& to) {
  const sockaddr_in address = AddressOf(to);
  ::sendto(Native(socket), reinterpret_cast<const char*>(datagram.data()),
           static_cast<int>(datagram.size()), 0, Generic(address), sizeof address);
}

std::ptrdiff_t ReceiveDatagram(SocketHandle socket, std::span<std::uint8_t> buffer,
                               Endpoint& from) {
  std::ptrdiff_t count = ReceiveOnce(socket, buffer, from);
  // A question that nobody took is reported here, in front of the answers of others.
  while (count < 0 && ::WSAGetLastError() == WSAECONNRESET) {
    count = ReceiveOnce(socket, buffer, from);
  }
  if (count >= 0) return count;
  return ::WSAGetLastError() == WSAEMSGSIZE ? static_cast<std::ptrdiff_t>(buffer.size()) : -1;
}

}  // namespace warpline
