#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "core/correction.h"
#include "files/format_module.h"

// What the two files that hold curves have in common: versioned headers, integer lines with slot
// numbers, and the fields of a curve.

namespace warpline {

// One integer field of a record: its key, the inclusive range that a file may hold, and access to
// it.
template <typename Record>
struct FieldRow {
  std::string_view key;
  std::int32_t low;
  std::int32_t high;
  std::int32_t (*load)(const Record&);
  void (*store)(Record&, std::int32_t);
};

template <auto Field, typename Record>
constexpr FieldRow<Record> RowOf(std::string_view key, std::int32_t low, std::int32_t high) {
  return {key, low, high, [](const Record& record) { return std::int32_t{record.*Field}; },
          [](Record& record, std::int32_t value) {
            record.*Field = static_cast<std::remove_reference_t<decltype(record.*Field)>>(value);
          }};
}

// Stores a value under a key when it is in range. True: stored; false: out of range; nothing: no
// such key.
template <typename Record, std::size_t kRows>
std::optional<bool> StoreField(const std::array<FieldRow<Record>, kRows>& rows,
                               std::string_view key, std::int32_t value, Record& record) {
  for (const FieldRow<Record>& row : rows) {
    if (row.key != key) continue;
    const bool in_range = row.low <= value && value <= row.high;
    if (in_range) row.store(record, value);
    return in_range;
  }
  return std::nullopt;
}

// The integer fields of a curve, in the order in which files hold them.
inline constexpr std::array<FieldRow<CurveDefinition>, 4> kCurveFields{{
    RowOf<&CurveDefinition::CorreFixed, CurveDefinition>("CorreFixed", 0, 1),
    RowOf<&CurveDefinition::CorreSymmetry, CurveDefinition>("CorreSymmetry", 0, 1),
    RowOf<&CurveDefinition::CorrePointNum, CurveDefinition>("CorrePointNum", kMinCurvePoints,
                                                            kMaxCurvePoints),
    RowOf<&CurveDefinition::CorreInterp, CurveDefinition>("CorreInterp", kStraightLine, kBSpline),
}};

// Stores a curve's field; slot (0..15) counts for the coordinates alone, whose values are
// millionths, 0..1000000. Result as StoreField.
std::optional<bool> StoreCurveField(std::string_view key, std::size_t slot, std::int32_t value,
                                    CurveDefinition& curve);

// Appends the X line and the Y line of a point; suffix is the axis letter or empty. Throws Fault
// for a coordinate whose millionths are no 32-bit integer.
void WritePoint(const CurveDefinition& curve, std::size_t slot, std::string_view suffix,
                std::vector<std::string>& lines);

// "key" + suffix + "=" + value.
std::string IntegerLine(std::string_view key, std::string_view suffix, std::int64_t value);

// Whether a read curve may be used: over the points in use Y is at least 0.75 and X ascends (equal
// neighbours pass) from exactly 0 to exactly 1.
bool CurveAccepted(const CurveDefinition& curve);

// A header line and what it tells about the lines behind it.
struct HeaderRow {
  std::string_view text;
  int version;
  bool accepted;            // false: such a file is refused
  std::size_t slot_digits;  // digits of the slot number in a key
  std::size_t slot_count;
};

// A key without axis letter and slot number, and what these were (horizontal, slot 0 when missing).
struct FieldKey {
  std::string_view name;
  Axis axis = kHorizontal;
  std::size_t slot = 0;
};

// The line steps of both files.
class CurveFileModule : public FormatModule {
 public:
  void ResetRead() override;
  bool ParseLine(std::string_view line) override;
  bool OldVersionSeen() const override { return old_version_seen_; }
  bool HeaderSeen() const override { return header_ != nullptr; }

 protected:
  // The rows live as long as the module; they are tested in their order.
  CurveFileModule(std::span<const HeaderRow> headers, bool has_axis_suffix)
      : headers_(headers), has_axis_suffix_(has_axis_suffix) {}

  // Stores a value; false when there is no such key or the value is out of range. Throws
  // Fault(kDoesNotFit) for a value that the field's integer type cannot hold.
  virtual bool StoreValue(const FieldKey& key, std::int64_t value) = 0;

  // The version of the last header met, 0 before any.
  int FileVersion() const { return header_ == nullptr ? 0 : header_->version; }

 private:
  void TestForHeaders(std::string_view line);
  FieldKey KeyOf(std::string_view text) const;

  std::span<const HeaderRow> headers_;
  bool has_axis_suffix_;
  const HeaderRow* header_ = nullptr;  // the accepted header met
  bool old_version_seen_ = false;
  std::string buffer_;  // kept between lines to spare allocations
};

}  // namespace warpline
