#include "picture/jpeg_tables.h"

#include <cstddef>
#include <cstdint>

namespace warpline {
namespace {

constexpr std::size_t kMostSymbols = 256;

// 0 beyond the end.
std::size_t ByteAt(std::string_view file, std::size_t at) {
  return at < file.size() ? static_cast<std::uint8_t>(file[at]) : 0;
}

// The tables of a segment. Each is a byte, how many codes there are of 1 to 16 bits, and their
// symbols; the last may claim to end behind the segment.
bool TablesFit(std::string_view file, std::size_t at, std::size_t end) {
  while (at < end) {
    std::size_t symbols = 0;
    for (std::size_t bits = 1; bits <= 16; ++bits) symbols += ByteAt(file, at + bits);
    if (symbols > kMostSymbols) return false;
    at += 17 + symbols;
  }
  return true;
}

// Marks without a segment: escapes in the picture's data, fillings, and places to begin anew.
bool StandsAlone(std::size_t kind) {
  return kind == 0 || kind == 0xFF || (kind >= 0xD0 && kind <= 0xD8);
}

}  // namespace

bool CodeTablesFit(std::string_view file) {
  constexpr std::size_t kTables = 0xC4;
  constexpr std::size_t kEnd = 0xD9;
  std::size_t at = 0;
  while ((at = file.find('\xFF', at)) != std::string_view::npos) {
    const std::size_t kind = ByteAt(file, at + 1);
    at += kind == 0xFF ? 1 : 2;
    if (kind == kEnd) return true;  // what a camera puts behind is none of the picture's
    if (StandsAlone(kind)) continue;
    const std::size_t end = at + (ByteAt(file, at) << 8 | ByteAt(file, at + 1));
    if (kind == kTables && !TablesFit(file, at + 2, end)) return false;
    if (end < at + 2) return true;  // where the library gives up
    at = end;
  }
  return true;
}

}  // namespace warpline
