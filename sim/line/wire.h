#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "platform/channel.h"

// The shape that all frames share, in both directions: three header bytes, the count of the bytes
// from byte 5 up to the checksum (most significant byte first), those bytes, and the checksum (sum
// of all bytes before it, modulo 256). A reply repeats bytes 0 (with bit 5 set) and 1 of its
// request; its byte 5 is the error byte, unless the command says otherwise.

namespace warpline::sim {

using Bytes = std::vector<std::uint8_t>;
using FrameHeader = std::array<std::uint8_t, 3>;

inline constexpr std::size_t kPayloadStart = 5;
inline constexpr std::size_t kMaxPayload = 4096;  // a longer count is nonsense
inline constexpr std::uint8_t kReplyBit = 0x20;
inline constexpr int kAnyByte = -1;  // in tables of frames: whatever byte 5 is

inline constexpr FrameHeader kDataHeader{0x01, 0xDF, 0x00};
inline constexpr FrameHeader kModeHeader{0x01, 0xDE, 0x00};
inline constexpr FrameHeader kWholeBlockHeader{0x01, 0xFC, 0x00};
inline constexpr FrameHeader kPrepareHeader{0x02, 0x1A, 0x00};
inline constexpr FrameHeader kModelClassHeader{0x00, 0x85, 0x00};

// The control library's own operations: byte 5 is one of the numbers below, then the arguments.
// 32-bit values travel least significant byte first.
//   running: reply error byte, power (1 byte)
//   panel:   reply error byte (1: not reported), width, height (16 bits each)
//   status:  reply error byte, power (1 byte), input (32 bits)
//   input:   argument input (32 bits); reply error byte
//   echo:    argument 32 bits; reply error byte, the same 32 bits. Not counted, never hit by a
//            fault: it finds the place again in a stream that may hold an overdue reply.
inline constexpr FrameHeader kLibraryHeader{0x7F, 0x57, 0x00};
enum LibraryOperation : std::uint8_t {
  kRunningOperation = 1,
  kPanelOperation = 2,
  kStatusOperation = 3,
  kInputOperation = 4,
  kEchoOperation = 5,
};

enum ErrorByte : std::uint8_t {
  kAccepted = 0,
  kNotSupported = 1,
  kRefused = 2,
  kPowerOff = 3,
};

// Header, count, payload, checksum. The payload has at most kMaxPayload bytes.
Bytes MakeFrame(const FrameHeader& header, ByteView payload);

// The reply of that payload to a request of at least two bytes.
Bytes MakeReply(ByteView request, ByteView payload);

// The frame's length that its first five bytes announce; nothing while there are fewer.
std::optional<std::size_t> AnnouncedLength(ByteView frame);

// Length and checksum are right.
bool IsWholeFrame(ByteView frame);

bool HasHeader(ByteView frame, const FrameHeader& header);

// 32-bit values in frames. ReadWord needs four bytes from start on.
void AppendWord(Bytes& bytes, std::uint32_t value);
std::uint32_t ReadWord(ByteView bytes, std::size_t start);

// Cuts a stream of bytes into frames.
class FrameReader {
 public:
  void Append(ByteView bytes);

  // The next frame that is there in full. When the announced count is nonsense, all that is there
  // comes as one frame (which no check accepts), so that reading starts anew behind it.
  std::optional<Bytes> Next();

  bool IsEmpty() const { return buffer_.empty(); }
  void Clear() { buffer_.clear(); }

 private:
  Bytes buffer_;
};

}  // namespace warpline::sim
