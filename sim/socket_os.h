#pragma once

#include <cstdint>
#include <span>

#include "sim/channel.h"
#include "sim/socket.h"

// The few calls in which the systems' sockets differ. Every socket is a non-blocking TCP socket
// that child processes do not inherit.

namespace warpline::sim {

using SocketHandle = std::intptr_t;
inline constexpr SocketHandle kNoSocket = -1;

// Readies the system's sockets for this process; may be called again.
bool StartSockets();

SocketHandle NewSocket();
void CloseSocket(SocketHandle socket);

enum class Direction { kRead, kWrite };
enum class WaitStatus { kReady, kTimedOut, kFailed };

// Ready also when the other side has closed or the connection failed.
WaitStatus WaitForSocket(SocketHandle socket, Direction direction, milliseconds time_out);

// Bytes moved; 0 when it would have to wait, -1 when the connection is gone.
std::ptrdiff_t SendSome(SocketHandle socket, ByteView bytes);
std::ptrdiff_t ReceiveSome(SocketHandle socket, std::span<std::uint8_t> buffer);

bool BindAndListen(SocketHandle socket, const Endpoint& endpoint);
std::uint16_t BoundPort(SocketHandle socket);
SocketHandle AcceptSocket(SocketHandle listener);

// False when the connection is refused at once; else it is ready when the socket becomes writable.
bool BeginConnect(SocketHandle socket, const Endpoint& endpoint);
bool IsConnected(SocketHandle socket);

}  // namespace warpline::sim
