#include "platform/program_kind.h"

#include <array>
#include <cstdint>
#include <fstream>
#include <string_view>

namespace warpline {
namespace {

using namespace std::string_view_literals;

// ELF: the class tells the width, the machine's number stands behind the file's type.
constexpr std::size_t kElfClass = 4;
constexpr std::size_t kElfMachine = 18;
constexpr char kElf64 = 2;

// PE: a number tells where the headers are; the machine's number begins the first of them.
constexpr std::size_t kPeStart = 0x3C;
constexpr std::size_t kPeMachine = 4;
constexpr std::size_t kPeMagic = 24;
constexpr std::string_view kPe64 = "\x0B\x02"sv;

constexpr std::size_t kNumberBytes = 2;

std::string FirstBytes(const std::filesystem::path& file) {
  std::array<char, 4096> buffer{};
  std::ifstream stream(file, std::ios::binary);
  stream.read(buffer.data(), buffer.size());
  return {buffer.data(), static_cast<std::size_t>(stream.gcount())};
}

std::string_view Part(std::string_view bytes, std::size_t start) {
  return start < bytes.size() ? bytes.substr(start, kNumberBytes) : std::string_view();
}

ProgramKind ElfKind(std::string_view bytes) {
  const int bits = bytes.substr(kElfClass, 1) == std::string_view(&kElf64, 1) ? 64 : 32;
  return {bits, "ELF " + std::string(Part(bytes, kElfMachine))};
}

std::optional<ProgramKind> PeKind(std::string_view bytes) {
  const std::string_view place = Part(bytes, kPeStart);
  if (place.size() < kNumberBytes) return std::nullopt;
  const auto start = static_cast<std::size_t>(static_cast<std::uint8_t>(place[0]) |
                                              static_cast<std::uint8_t>(place[1]) << 8);
  if (start >= bytes.size() || !bytes.substr(start).starts_with("PE\0\0"sv)) return std::nullopt;
  return ProgramKind{Part(bytes, start + kPeMagic) == kPe64 ? 64 : 32,
                     "PE " + std::string(Part(bytes, start + kPeMachine))};
}

}  // namespace

std::optional<ProgramKind> ProgramKindOf(const std::filesystem::path& file) {
  const std::string bytes = FirstBytes(file);
  if (bytes.starts_with("\x7F"
                        "ELF")) {
    return ElfKind(bytes);
  }
  if (bytes.starts_with("MZ")) return PeKind(bytes);
  return std::nullopt;
}

}  // namespace warpline
