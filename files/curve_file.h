#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/correction.h"
#include "core/fields.h"
#include "files/format_module.h"

// What the two files that hold curves have in common: versioned headers, integer lines with slot
// numbers, and the fields of a curve.

namespace warpline {

// The integer fields of a curve, in the order in which files hold them.
inline constexpr std::array kCurveFields{
    RowOf<&CurveDefinition::CorreFixed, CurveDefinition>("CorreFixed", {0, 1}),
    RowOf<&CurveDefinition::CorreSymmetry, CurveDefinition>("CorreSymmetry", {0, 1}),
    RowOf<&CurveDefinition::CorrePointNum, CurveDefinition>("CorrePointNum",
                                                            {kMinCurvePoints, kMaxCurvePoints}),
    RowOf<&CurveDefinition::CorreInterp, CurveDefinition>("CorreInterp", {kStraightLine, kBSpline}),
};

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
