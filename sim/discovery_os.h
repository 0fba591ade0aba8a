#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "sim/socket_os.h"

// The calls in which the systems' datagram sockets differ. They are non-blocking, too.

namespace warpline::sim {

SocketHandle NewDatagramSocket();

// Takes a place for this socket alone.
bool BindDatagramSocket(SocketHandle socket, const Endpoint& place);

// A datagram that could not be sent is lost, as one on its way may be.
void SendDatagram(SocketHandle socket, ByteView datagram, const Endpoint& to);

// Size of the next datagram, its sender in from; -1 when there is none. One that does not fit the
// buffer is cut.
std::ptrdiff_t ReceiveDatagram(SocketHandle socket, std::span<std::uint8_t> buffer, Endpoint& from);

}  // namespace warpline::sim
