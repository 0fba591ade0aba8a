#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include "sim/discovery_os.h"

namespace warpline::sim {
namespace {

int Descriptor(SocketHandle socket) {
  return static_cast<int>(socket);
}

sockaddr_in AddressOf(const Endpoint& endpoint) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(endpoint.Port);
  address.sin_addr.s_addr = htonl(endpoint.Address);
  return address;
}

}  // namespace

SocketHandle NewDatagramSocket() {
  const int descriptor = ::socket(AF_INET, SOCK_DGRAM, 0);
  if (descriptor < 0) return kNoSocket;
  ::fcntl(descriptor, F_SETFL, ::fcntl(descriptor, F_GETFL) | O_NONBLOCK);
  ::fcntl(descriptor, F_SETFD, FD_CLOEXEC);
  return descriptor;
}

bool BindDatagramSocket(SocketHandle socket, const Endpoint& place) {
  const sockaddr_in address = AddressOf(place);
  return ::bind(Descriptor(socket), reinterpret_cast<const sockaddr*>(&address), sizeof address) ==
         0;
}

void SendDatagram(SocketHandle socket, ByteView datagram, const Endpoint& to) {
  const sockaddr_in address = AddressOf(to);
  ::sendto(Descriptor(socket), datagram.data(), datagram.size(), MSG_NOSIGNAL,
           reinterpret_cast<const sockaddr*>(&address), sizeof address);
}

std::ptrdiff_t ReceiveDatagram(SocketHandle socket, std::span<std::uint8_t> buffer,
                               Endpoint& from) {
  sockaddr_in address{};
  socklen_t size = sizeof address;
  const ssize_t count = ::recvfrom(Descriptor(socket), buffer.data(), buffer.size(), 0,
                                   reinterpret_cast<sockaddr*>(&address), &size);
  from = {ntohl(address.sin_addr.s_addr), ntohs(address.sin_port)};
  return count;
}

}  // namespace warpline::sim
