#include <winsock2.h>
#include <ws2tcpip.h>

#include "sim/discovery_os.h"

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

std::ptrdiff_t ReceiveOnce(SocketHandle socket, std::span<std::uint8_t> buffer, Endpoint& from) {
  sockaddr_in address{};
  int size = sizeof address;
  const int count =
      ::recvfrom(Native(socket), reinterpret_cast<char*>(buffer.data()),
                 static_cast<int>(buffer.size()), 0, reinterpret_cast<sockaddr*>(&address), &size);
  from = {ntohl(address.sin_addr.s_addr), ntohs(address.sin_port)};
  return count;
}

}  // namespace

SocketHandle NewDatagramSocket() {
  const SOCKET socket = ::socket(AF_INET, SOCK_DGRAM, IPPROTO_UDP);
  if (socket == INVALID_SOCKET) return kNoSocket;
  u_long non_blocking = 1;
  ::ioctlsocket(socket, FIONBIO, &non_blocking);
  ::SetHandleInformation(reinterpret_cast<HANDLE>(socket), HANDLE_FLAG_INHERIT, 0);
  return static_cast<SocketHandle>(socket);
}

bool BindDatagramSocket(SocketHandle socket, const Endpoint& place) {
  const BOOL on = TRUE;
  ::setsockopt(Native(socket), SOL_SOCKET, SO_EXCLUSIVEADDRUSE, reinterpret_cast<const char*>(&on),
               sizeof on);
  const sockaddr_in address = AddressOf(place);
  return ::bind(Native(socket), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
}

void SendDatagram(SocketHandle socket, ByteView datagram, const Endpoint& to) {
  const sockaddr_in address = AddressOf(to);
  ::sendto(Native(socket), reinterpret_cast<const char*>(datagram.data()),
           static_cast<int>(datagram.size()), 0, reinterpret_cast<const sockaddr*>(&address),
           sizeof address);
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

}  // namespace warpline::sim
