#include "files/wltfile.h"

#include <algorithm>

#include "core/fault.h"
#include "core/parameters.h"

namespace warpline {
namespace {

constexpr std::array<HeaderRow, 3> kWltHeaders{{
    {"[Warpline Tool Data File]", 1, false, 2, 16},
    {"[Warpline Tool Data File 2.0]", 2, true, 1, 8},
    {"[Warpline Tool Data File 3.0]", 3, true, 2, 16},
}};

constexpr std::string_view kScreenType = "ScreenType";
constexpr std::string_view kProjection = "Projection";
constexpr const ParameterRow& kDistortion = RowOfParameter(ParameterField::kDistortion);
constexpr std::array<std::string_view, kAxisCount> kSuffixes{"H", "V"};

// The two fields outside the per-axis records are converted to 16 bits before their range is looked
// at.
bool StoreShort(std::int64_t value, std::int16_t high, std::int16_t& field) {
  const auto number = NarrowTo<std::int16_t>(value);
  if (number < 0 || number > high) return false;
  field = number;
  return true;
}

template <typename Row, typename Record, std::size_t kRows>
void WriteFields(const std::array<Row, kRows>& rows, const std::array<Record, kAxisCount>& records,
                 std::vector<std::string>& lines) {
  for (const FieldRow<Record>& row : rows) {
    for (const Axis axis : {kHorizontal, kVertical}) {
      lines.push_back(IntegerLine(row.key, kSuffixes[axis], row.load(records[axis])));
    }
  }
}

}  // namespace

WltFile::WltFile(CorrectionData& correction)
    : CurveFileModule(kWltHeaders, true), correction_(correction) {}

bool WltFile::StoreValue(const FieldKey& key, std::int64_t value) {
  if (key.name == kScreenType) {
    return StoreShort(value, kScreenTypeCount - 1, correction_.ScreenType);
  }
  if (key.name == kProjection) return StoreShort(value, 1, correction_.Projection[key.axis]);
  const auto number = NarrowTo<std::int32_t>(value);
  if (key.name == kDistortion.key) return StoreDistortion(key.axis, number);
  std::optional<bool> stored =
      StoreField(kParameters, key.name, number, correction_.Axes[key.axis]);
  if (!stored) stored = StoreCurveField(key.name, key.slot, number, correction_.Curves[key.axis]);
  return stored.value_or(false);
}

bool WltFile::StoreDistortion(Axis axis, std::int32_t value) {
  AxisParameters& parameters = correction_.Axes[axis];
  // Unlike every other field, one out of range does not keep its old value.
  parameters.Distortion = 0;
  if (!kDistortion.file.Holds(value)) return false;
  kDistortion.store(parameters, FileVersion() == 2 ? RoundTo<std::int16_t>(value / 3.0) : value);
  return true;
}

bool WltFile::CheckContents() {
  constexpr std::array kAxes{kHorizontal, kVertical};
  return std::all_of(kAxes.begin(), kAxes.end(), [this](Axis axis) {
    const Range optical = WindowRange(ParameterField::kOptical, correction_.Projection[axis]);
    return CurveAccepted(correction_.Curves[axis]) && optical.Holds(correction_.Axes[axis].Optical);
  });
}

bool WltFile::Write(std::vector<std::string>& lines) const {
  lines.emplace_back(kWltHeaders.back().text);
  lines.push_back(IntegerLine(kScreenType, "", correction_.ScreenType));
  for (const Axis axis : {kHorizontal, kVertical}) {
    lines.push_back(IntegerLine(kProjection, kSuffixes[axis], correction_.Projection[axis]));
  }
  WriteFields(kParameters, correction_.Axes, lines);
  WriteFields(kCurveFields, correction_.Curves, lines);
  try {
    for (std::size_t slot = 0; slot < kMaxCurvePoints; ++slot) {
      for (const Axis axis : {kHorizontal, kVertical}) {
        WritePoint(correction_.Curves[axis], slot, kSuffixes[axis], lines);
      }
    }
  } catch (const Fault&) {
    return false;
  }
  return true;
}

}  // namespace warpline
