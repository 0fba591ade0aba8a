#include "files/format_module.h"

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

}  // namespace

std::optional<FileErrorCode> ReadLines(std::string_view text, FormatModule& module) {
  while (true) {
    const std::string_view line = TakeLine(text);
    if (line.empty()) break;
    if (!module.ParseLine(line)) return kFileValueWrong;
  }
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
