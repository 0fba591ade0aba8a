#include "app/recovery_text.h"

#include <algorithm>
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
// The last second that a WallTime can be, in the year 2262.
constexpr std::int64_t kLatest =
    std::chrono::floor<std::chrono::seconds>(WallTime::max()).time_since_epoch().count();

// A file name may hold line ends; "%" and two digits stand for what would break a line.
std::string InOneLine(std::string_view text) {
  std::string line;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte >= ' ' && c != '%') {
      line += c;
    } else {
      line.append(1, '%').append(1, HexDigit(byte / 16U)).append(1, HexDigit(byte));
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
    const std::string_view pair = line.substr(1, 2);
    if (pair.size() < 2 || !std::all_of(pair.begin(), pair.end(), IsHexDigit)) return std::nullopt;
    text += static_cast<char>(HexByte(pair));
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

}  // namespace

std::optional<std::string> RecoveryText(const UnsavedWork& work) {
  CorrectionData correction = work.correction;
  std::vector<std::string> lines{
      std::string(kFirstLine),
      std::string(kFile) + InOneLine(Utf8Of(work.file)),
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
  const auto name = Unescaped(*file);
  const auto path = name ? PathOfForeign(*name) : std::nullopt;
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
