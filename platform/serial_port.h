#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <system_error>

#include "platform/channel.h"

// Serial ports, and the pseudo-terminal that stands in for one.

namespace warpline {

enum class SerialStatus { kOk, kNoPort, kInUse };

// Opens port number 1..8 at a speed in bit/s, 8 data bits, no parity, one stop bit, nothing
// translated. On POSIX the device's path stands in the environment variable WARPLINE_COM<number>.
std::unique_ptr<Channel> OpenSerialPort(int number, int speed, SerialStatus& status);

// Why there is no pseudo-terminal: the system knows none, offers none more, or the link to its
// device cannot be made.
enum class TerminalStatus { kOk, kUnknown, kNone, kNoLink };

// The projector's end of a pseudo-terminal whose other end programs open as a serial device.
class PseudoTerminal {
 public:
  virtual ~PseudoTerminal() = default;

  // Makes one and a symbolic link to its device at that path; the link goes away with the object.
  // On failure null; error is set when it was the link. Windows has none.
  static std::unique_ptr<PseudoTerminal> Create(const std::filesystem::path& path,
                                                TerminalStatus& status, std::error_code& error);

  // True when a program has the device open; waits for one.
  virtual bool WaitForPeer(milliseconds time_out) = 0;

  // The speed that the program has set, bit/s; 0 when it cannot be told.
  virtual int Speed() const = 0;

  // Reports kClosed while no program has the device open.
  virtual Channel& Line() = 0;
};

}  // namespace warpline
