#include "picture/exif.h"

#include <cstddef>
#include <cstdint>

namespace warpline {
namespace {

using namespace std::string_view_literals;

constexpr std::uint32_t kOrientationTag = 0x0112;
constexpr std::size_t kEntrySize = 12;
constexpr std::uint32_t kHighestOrientation = 8;

// A number of that many bytes; 0 beyond the end.
std::uint32_t NumberAt(std::string_view bytes, std::size_t at, std::size_t count, bool big_end) {
  if (at > bytes.size() || bytes.size() - at < count) return 0;
  std::uint32_t number = 0;
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t place = big_end ? at + i : at + count - 1 - i;
    number = number << 8 | static_cast<std::uint8_t>(bytes[place]);
  }
  return number;
}

// From the first of the directories that EXIF consists of.
int OrientationOfExif(std::string_view exif) {
  const bool big_end = exif.starts_with("MM\0*"sv);
  if (!big_end && !exif.starts_with("II*\0"sv)) return 1;
  const std::size_t directory = NumberAt(exif, 4, 4, big_end);
  const std::uint32_t entries = NumberAt(exif, directory, 2, big_end);
  for (std::uint32_t i = 0; i < entries; ++i) {
    const std::size_t entry = directory + 2 + i * kEntrySize;
    if (NumberAt(exif, entry, 2, big_end) != kOrientationTag) continue;
    const std::uint32_t value = NumberAt(exif, entry + 8, 2, big_end);
    return value >= 1 && value <= kHighestOrientation ? static_cast<int>(value) : 1;
  }
  return 1;
}

// Segments follow each other until the picture itself begins.
int OrientationOfJpeg(std::string_view file) {
  constexpr auto kName = "Exif\0\0"sv;
  std::size_t at = 2;
  while (NumberAt(file, at, 1, true) == 0xFF) {
    const std::uint32_t kind = NumberAt(file, at + 1, 1, true);
    if (kind == 0xFF) {
      ++at;  // filled up
      continue;
    }
    const std::size_t length = NumberAt(file, at + 2, 2, true);
    if (kind == 0xDA || length < 2) return 1;
    const std::string_view segment = file.substr(at + 2, length).substr(2);
    if (kind == 0xE1 && segment.starts_with(kName)) {
      return OrientationOfExif(segment.substr(kName.size()));
    }
    at += 2 + length;
  }
  return 1;
}

int OrientationOfPng(std::string_view file) {
  constexpr std::size_t kAroundData = 12;  // length and name before it, a check sum behind it
  for (std::size_t at = 8; file.size() > at && file.size() - at >= kAroundData;) {
    const std::size_t length = NumberAt(file, at, 4, true);
    if (length > file.size() - at - kAroundData) return 1;
    if (file.substr(at + 4, 4) == "eXIf") return OrientationOfExif(file.substr(at + 8, length));
    at += kAroundData + length;
  }
  return 1;
}

}  // namespace

int OrientationOf(std::string_view file) {
  if (file.starts_with("\xFF\xD8"sv)) return OrientationOfJpeg(file);
  return file.starts_with("\x89PNG"sv) ? OrientationOfPng(file) : 1;
}

}  // namespace warpline
