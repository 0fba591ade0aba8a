#include "files/format_module.h"

#include <algorithm>
#include <cctype>

#include "core/conversions.h"

namespace warpline {
namespace {

// Takes the first line off the rest of a text.
std::string_view TakeLine(std::string_view& rest) {
  const std::size_t end = rest.find('\n');
  std::string_view line = rest.substr(0, end);
  rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

constexpr std::size_t kLongestStart = 64;  // longer than every key with its "="

}  // namespace

// What stands in a foreign file is shown to the user as far as it is letters of a key.
std::string FilePlace::Key() const {
  const std::size_t equals = start.find('=');
  if (equals == std::string::npos) return {};
  std::string key = WithoutBlanks(start.substr(0, equals));
  const bool is_key = std::all_of(key.begin(), key.end(), [](unsigned char letter) {
    return letter < 0x80 && (std::isalnum(letter) != 0 || letter == '_');
  });
  return is_key ? key : std::string();
}

std::optional<FileErrorCode> ReadLines(std::string_view text, FormatModule& module,
                                       FilePlace& place) {
  for (place.line = 1;; ++place.line) {
    const std::string_view line = TakeLine(text);
    if (line.empty()) break;
    place.start.assign(line.substr(0, kLongestStart));
    if (!module.ParseLine(line)) return kFileValueWrong;
  }
  place = {};
  if (module.OldVersionSeen()) return kFileVersionDiffers;
  if (!module.HeaderSeen()) return kFileCorrupted;
  if (!module.CheckContents()) return kFileValueWrong;
  module.Commit();
  return std::nullopt;
}

std::string JoinLines(const std::vector<std::string>& lines) {
  std::size_t size = 0;
  for (const std::string& line : lines) size += line.size() + 2;
  std::string text;
  text.reserve(size);
  for (const std::string& line : lines) text.append(line).append("\r\n");
  return text;
}

std::optional<KeyAndValue> SplitLine(std::string_view line, std::string& buffer) {
  if (line.find('=') == std::string_view::npos) return std::nullopt;
  if (line.find(' ') != std::string_view::npos) {
    buffer = WithoutBlanks(line);
    line = buffer;
  }
  const std::size_t equals = line.find('=');
  return KeyAndValue{line.substr(0, equals), line.substr(equals + 1)};
}

}  // namespace warpline
