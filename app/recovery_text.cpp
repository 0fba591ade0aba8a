#include "app/recovery_text.h"

#include <cstdint>
#include <vector>

#include "core/conversions.h"
#include "core/fault.h"
#include "files/wltfile.h"
#include "platform/files.h"

namespace warpline {
namespace {

constexpr std::string_view kFirstLine = "; Warpline Tool recovery copy";
constexpr std::string_view kFile = "; File: ";
constexpr std::string_view kChanged = "; Changed: ";  // seconds since 1970
constexpr std::string_view kLastLine = "; End";
constexpr std::string_view kLineEnd = "\r\n";
constexpr std::int64_t kLatest = 253402300799;  // the last second of the year 9999

constexpr std::string_view kHexDigits = "0123456789ABCDEF";

// A file name may hold line ends; "%" and two digits stand for what would break a line.
std::string Escaped(std::string_view text) {
  std::string line;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte >= ' ' && c != '%') {
      line += c;
    } else {
      line.append(1, '%').append(1, kHexDigits[byte / 16]).append(1, kHexDigits[byte % 16]);
    }
  }
  return line;
}

std::optional<std::string> Unescaped(std::string_view line) {
  std::string text;
  while (!line.empty()) {
    if (line.front() != '%') {
      text += line.front();
      line.remove_prefix(1);
      continue;
    }
    if (line.size() < 3) return std::nullopt;
    const std::size_t high = kHexDigits.find(line[1]);
    const std::size_t low = kHexDigits.find(line[2]);
    if (high == std::string_view::npos || low == std::string_view::npos) return std::nullopt;
    text += static_cast<char>(high * 16 + low);
    line.remove_prefix(3);
  }
  return text;
}

// Takes a line off the rest of a text: what stands behind its start. Nothing when it does not begin
// so.
std::optional<std::string_view> TakeLine(std::string_view& rest, std::string_view start) {
  const std::size_t end = rest.find(kLineEnd);
  if (end == std::string_view::npos || !rest.starts_with(start)) return std::nullopt;
  const std::string_view line = rest.substr(start.size(), end - start.size());
  rest.remove_prefix(end + kLineEnd.size());
  return line;
}

std::int64_t SecondsOf(WallTime time) {
  return std::chrono::floor<std::chrono::seconds>(time.time_since_epoch()).count();
}

// Foreign bytes need not be a name that the system knows.
std::optional<std::filesystem::path> FileOf(std::string_view line) {
  const std::optional<std::string> name = Unescaped(line);
  if (!name) return std::nullopt;
  try {
    return PathOf(*name);
  } catch (const std::system_error&) {
    return std::nullopt;
  }
}

}  // namespace

std::optional<std::string> RecoveryText(const UnsavedWork& work) {
  CorrectionData correction = work.correction;
  std::vector<std::string> lines{
      std::string(kFirstLine),
      std::string(kFile) + Escaped(Utf8Of(work.file)),
      std::string(kChanged) + std::to_string(SecondsOf(work.changed)),
  };
  if (!WltFile(correction).Write(lines)) return std::nullopt;
  lines.emplace_back(kLastLine);
  return JoinLines(lines);
}

std::optional<UnsavedWork> WorkOf(std::string_view bytes) {
  if (!bytes.ends_with(std::string(kLastLine).append(kLineEnd))) return std::nullopt;
  const auto first = TakeLine(bytes, kFirstLine);
  const auto file = TakeLine(bytes, kFile);
  const auto changed = TakeLine(bytes, kChanged);
  if (!first || !file || !changed) return std::nullopt;
  const auto path = FileOf(*file);
  const auto seconds = WholeNumber<std::int64_t>(*changed, 0, kLatest);
  const auto correction = CorrectionOf(bytes);
  if (!path || !seconds || !correction) return std::nullopt;
  return UnsavedWork{*correction, *path, WallTime(std::chrono::seconds(*seconds))};
}

std::optional<CorrectionData> CorrectionOf(std::string_view bytes) {
  CorrectionData correction;
  ResetToScreenType(correction);
  WltFile module(correction);
  module.ResetRead();
  try {
    if (ReadLines(bytes, module)) return std::nullopt;
  } catch (const Fault&) {
    return std::nullopt;
  }
  return correction;
}

}  // namespace warpline
