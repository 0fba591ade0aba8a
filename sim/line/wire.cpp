#include "sim/line/wire.h"

#include <algorithm>
#include <utility>

#include "core/conversions.h"

namespace warpline::sim {

Bytes MakeFrame(const FrameHeader& header, ByteView payload) {
  Bytes frame(header.begin(), header.end());
  frame.push_back(static_cast<std::uint8_t>(payload.size() >> 8));
  frame.push_back(static_cast<std::uint8_t>(payload.size()));
  frame.insert(frame.end(), payload.begin(), payload.end());
  frame.push_back(Checksum(frame, frame.size()));
  return frame;
}

Bytes MakeReply(ByteView request, ByteView payload) {
  const auto first = static_cast<std::uint8_t>(request[0] | kReplyBit);
  return MakeFrame({first, request[1], 0x00}, payload);
}

std::optional<std::size_t> AnnouncedLength(ByteView frame) {
  if (frame.size() < kPayloadStart) return std::nullopt;
  const std::size_t count = std::size_t{frame[3]} << 8 | frame[4];
  return kPayloadStart + count + 1;
}

bool IsWholeFrame(ByteView frame) {
  return AnnouncedLength(frame) == frame.size() &&
         Checksum(frame, frame.size() - 1) == frame.back();
}

bool HasHeader(ByteView frame, const FrameHeader& header) {
  return frame.size() >= header.size() && std::equal(header.begin(), header.end(), frame.begin());
}

void AppendWord(Bytes& bytes, std::uint32_t value) {
  for (int shift = 0; shift < 32; shift += 8) {
    bytes.push_back(static_cast<std::uint8_t>(value >> shift));
  }
}

std::uint32_t ReadWord(ByteView bytes, std::size_t start) {
  std::uint32_t value = 0;
  for (std::size_t i = 0; i < 4; ++i) value |= std::uint32_t{bytes[start + i]} << (8 * i);
  return value;
}

void FrameReader::Append(ByteView bytes) {
  buffer_.insert(buffer_.end(), bytes.begin(), bytes.end());
}

std::optional<Bytes> FrameReader::Next() {
  const std::optional<std::size_t> length = AnnouncedLength(buffer_);
  if (!length) return std::nullopt;
  if (*length > kPayloadStart + kMaxPayload + 1) return std::exchange(buffer_, {});
  if (buffer_.size() < *length) return std::nullopt;
  const auto end = buffer_.begin() + static_cast<std::ptrdiff_t>(*length);
  Bytes frame(buffer_.begin(), end);
  buffer_.erase(buffer_.begin(), end);
  return frame;
}

}  // namespace warpline::sim
