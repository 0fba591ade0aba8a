#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "platform/channel.h"

// The few calls in which the systems' sockets differ. Every socket is non-blocking, and child
// processes do not inherit it.

namespace warpline {

// A place on a loopback address.
struct Endpoint {
  std::uint32_t Address = 0x7F000001;  // 127.0.0.0/8, host byte order
  std::uint16_t Port = 0;
};

using SocketHandle = std::intptr_t;
inline constexpr SocketHandle kNoSocket = -1;

// Readies the system's sockets for this process; may be called again.
bool StartSockets();

SocketHandle NewSocket();  // for TCP
SocketHandle NewDatagramSocket();
void CloseSocket(SocketHandle socket);

enum class Direction { kRead, kWrite };
enum class WaitStatus { kReady, kTimedOut, kFailed };

// Ready also when the other side has closed or the connection failed.
WaitStatus WaitForSocket(SocketHandle socket, Direction direction, milliseconds time_out);

// Bytes moved; 0 when it would have to wait, -1 when the connection is gone.
std::ptrdiff_t SendSome(SocketHandle socket, ByteView bytes);
std::ptrdiff_t ReceiveSome(SocketHandle socket, std::span<std::uint8_t> buffer);

// Takes a place for this socket alone.
bool BindSocket(SocketHandle socket, const Endpoint& place);
bool BindAndListen(SocketHandle socket, const Endpoint& endpoint);
std::uint16_t BoundPort(SocketHandle socket);
SocketHandle AcceptSocket(SocketHandle listener);

// False when the connection is refused at once; else it is ready when the socket becomes writable.
bool BeginConnect(SocketHandle socket, const Endpoint& endpoint);
bool IsConnected(SocketHandle socket);

// A datagram that could not be sent is lost, as one on its way may be.
void SendDatagram(SocketHandle socket, ByteView datagram, const Endpoint& to);

// Size of the next datagram, its sender in from; -1 when there is none. One that does not fit the
// buffer is cut.
std::ptrdiff_t ReceiveDatagram(SocketHandle socket, std::span<std::uint8_t> buffer, Endpoint& from);

}  // namespace warpline
