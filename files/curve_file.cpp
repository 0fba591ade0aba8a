#include "files/curve_file.h"

#include "core/conversions.h"
#include "core/fault.h"

namespace warpline {
namespace {

constexpr double kMillionths = 1000000.0;  // file units in a coordinate of 1
constexpr double kLowestY = 0.75;

struct CoordinateRow {
  std::string_view key;
  double CurvePoint::*field;
};

constexpr std::array<CoordinateRow, 2> kCoordinates{{
    {"CorreDataPtsX", &CurvePoint::X},
    {"CorreDataPtsY", &CurvePoint::Y},
}};

// The slot number at the end of a key, nothing when the key does not end in one that the header
// allows.
std::optional<std::size_t> SlotOf(std::string_view key, const HeaderRow& header) {
  if (key.size() < header.slot_digits) return std::nullopt;
  const std::string_view digits = key.substr(key.size() - header.slot_digits);
  return WholeNumber<std::size_t>(digits, 0, header.slot_count - 1);
}

}  // namespace

std::optional<bool> StoreCurveField(std::string_view key, std::size_t slot, std::int32_t value,
                                    CurveDefinition& curve) {
  for (const CoordinateRow& row : kCoordinates) {
    if (row.key != key) continue;
    if (value < 0 || value > kMillionths) return false;
    curve.CorreDataPts[slot].*row.field = value / kMillionths;
    return true;
  }
  return StoreField(kCurveFields, key, value, curve);
}

void WritePoint(const CurveDefinition& curve, std::size_t slot, std::string_view suffix,
                std::vector<std::string>& lines) {
  const char digits[] = {static_cast<char>('0' + slot / 10), static_cast<char>('0' + slot % 10)};
  for (const CoordinateRow& row : kCoordinates) {
    std::string key(row.key);
    key.append(digits, 2);
    const double coordinate = curve.CorreDataPts[slot].*row.field;
    lines.push_back(IntegerLine(key, suffix, RoundTo<std::int32_t>(coordinate * kMillionths)));
  }
}

std::string IntegerLine(std::string_view key, std::string_view suffix, std::int64_t value) {
  std::string line;
  line.reserve(key.size() + suffix.size() + 12);
  return line.append(key).append(suffix).append("=").append(std::to_string(value));
}

bool CurveAccepted(const CurveDefinition& curve) {
  const int count = curve.CorrePointNum;
  if (count < kMinCurvePoints || count > kMaxCurvePoints) return false;
  const auto points = std::span(curve.CorreDataPts).first(static_cast<std::size_t>(count));
  double previous_x = 0.0;
  for (const CurvePoint& point : points) {
    if (!(point.Y >= kLowestY) || !(point.X >= previous_x)) return false;
    previous_x = point.X;
  }
  return points.front().X == 0.0 && points.back().X == 1.0;
}

void CurveFileModule::ResetRead() {
  header_ = nullptr;
  old_version_seen_ = false;
}

bool CurveFileModule::ParseLine(std::string_view line) {
  line = WithoutComment(line);
  if (header_ == nullptr) {
    TestForHeaders(line);
    return true;
  }
  const std::optional<KeyAndValue> parts = SplitLine(line, buffer_);
  if (!parts) return true;
  const FieldKey key = KeyOf(parts->key);
  if (!IsIntegerText(parts->value)) return false;
  return StoreValue(key, IntegerOf(CleanIntegerText(parts->value, "0")));
}

void CurveFileModule::TestForHeaders(std::string_view line) {
  for (const HeaderRow& header : headers_) {
    if (line.find(header.text) == std::string_view::npos) continue;
    if (header.accepted) {
      header_ = &header;
    } else {
      old_version_seen_ = true;
    }
  }
}

FieldKey CurveFileModule::KeyOf(std::string_view text) const {
  FieldKey key{text};
  if (has_axis_suffix_ && (text.ends_with('H') || text.ends_with('V'))) {
    key.axis = text.ends_with('H') ? kHorizontal : kVertical;
    key.name.remove_suffix(1);
  }
  if (const auto slot = SlotOf(key.name, *header_)) {
    key.slot = *slot;
    key.name.remove_suffix(header_->slot_digits);
  }
  return key;
}

}  // namespace warpline
