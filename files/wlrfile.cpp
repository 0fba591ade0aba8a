#include "files/wlrfile.h"

#include <algorithm>
#include <array>

#include "core/conversions.h"

namespace warpline {
namespace {

constexpr std::string_view kHeader = "[Warpline Register File]";
constexpr std::array<std::string_view, kAxisCount> kPrefixes{"h_", "v_"};

// The second differences stand in pieces, a line each, under the register's name and a running
// offset.
constexpr std::string_view kPieceMark = "_corre_2_";
constexpr std::size_t kPieceNameLength = 9;  // "h_corre_2"
constexpr std::size_t kPieceLength = 64;

// comp_disp has one value only.
bool MayBeMissing(std::size_t field) {
  return field == kCompDisp;
}

std::string PieceKey(std::string_view name, std::size_t piece) {
  std::string key(name);
  return key.append("_0").append(HexTextMsbFirst(static_cast<std::uint32_t>(piece * 4), 2)) + "0";
}

void WritePieces(std::string_view name, std::string_view text, std::vector<std::string>& lines) {
  std::size_t piece = 0;
  for (; text.size() > kPieceLength; text.remove_prefix(kPieceLength)) {
    std::string line = PieceKey(name, piece++) + "=";
    lines.push_back(line.append(text.substr(0, kPieceLength)));
  }
  std::string line = PieceKey(name, piece) + "=";
  lines.push_back(line.append(text));
}

}  // namespace

void WlrFile::ResetRead() {
  header_seen_ = false;
  for (AxisRegisters& axis : registers_) axis.fill("");
}

bool WlrFile::ParseLine(std::string_view line) {
  line = WithoutComment(line);
  if (!header_seen_) {
    header_seen_ = line.find(kHeader) != std::string_view::npos;
    return true;
  }
  const std::optional<KeyAndValue> parts = SplitLine(line, buffer_);
  if (!parts) return true;
  const std::size_t max_length = StoreValue(parts->key, parts->value);
  return CheckValue(parts->value, max_length);
}

std::size_t WlrFile::StoreValue(std::string_view key, std::string_view value) {
  // The offset behind the name does not place a piece: pieces are appended as they come.
  const bool is_piece = key.find(kPieceMark) != std::string_view::npos;
  const std::string_view name = is_piece ? key.substr(0, kPieceNameLength) : key;
  for (const Axis axis : {kHorizontal, kVertical}) {
    if (!name.starts_with(kPrefixes[axis])) continue;
    for (std::size_t field = 0; field < kRegisterFieldCount; ++field) {
      if (name.substr(kPrefixes[axis].size()) != kRegisterFields[field].name) continue;
      if (is_piece != (field == kCorre2)) return 0;
      std::string& text = registers_[axis][field];
      if (!is_piece) text.clear();
      text += value;
      return is_piece ? kPieceLength : kRegisterFields[field].hex_digits;
    }
  }
  return 0;
}

bool WlrFile::CheckValue(std::string_view value, std::size_t max_length) const {
  const bool length_right = !value.empty() && value.size() <= max_length;
  if (!length_right) messages_.ShowText(kMsgParameterLength);
  const bool digits_right = std::all_of(value.begin(), value.end(), IsHexDigit);
  if (!digits_right) messages_.ShowText(kMsgParameterValue);
  return length_right && digits_right;
}

bool WlrFile::CheckContents() {
  for (const AxisRegisters& axis : registers_) {
    for (std::size_t field = 0; field < kRegisterFieldCount; ++field) {
      if (!MayBeMissing(field) && axis[field].empty()) return false;
    }
  }
  return true;
}

bool WlrFile::Write(std::vector<std::string>& lines) const {
  lines.emplace_back(kHeader);
  for (const Axis axis : {kHorizontal, kVertical}) {
    for (std::size_t field = 0; field < kRegisterFieldCount; ++field) {
      std::string name = std::string(kPrefixes[axis]).append(kRegisterFields[field].name);
      const std::string& text = registers_[axis][field];
      // A line without a value would be refused when the file is read again.
      if (MayBeMissing(field) && text.empty()) continue;
      if (field == kCorre2) {
        WritePieces(name, text, lines);
      } else {
        lines.push_back(name.append("=").append(text));
      }
    }
  }
  return true;
}

}  // namespace warpline
