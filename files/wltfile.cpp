#include "files/wltfile.h"

#include <algorithm>

#include "core/fault.h"

namespace warpline {
namespace {

constexpr std::array<HeaderRow, 3> kHeaders{{
    {"[Warpline Tool Data File]", 1, false, 2, 16},
    {"[Warpline Tool Data File 2.0]", 2, true, 1, 8},
    {"[Warpline Tool Data File 3.0]", 3, true, 2, 16},
}};

constexpr std::string_view kScreenType = "ScreenType";
constexpr std::string_view kProjection = "Projection";
constexpr std::string_view kDistortion = "Distortion";
constexpr std::array<std::string_view, kAxisCount> kSuffixes{"H", "V"};

// Wider than the sliders in places; Optical is narrowed by the check of the whole.
constexpr std::array<FieldRow<AxisParameters>, 6> kParameters{{
    RowOf<&AxisParameters::Distortion, AxisParameters>(kDistortion, -300, 300),
    RowOf<&AxisParameters::Optical, AxisParameters>("Optical", -127, 127),
    RowOf<&AxisParameters::Linearity, AxisParameters>("Linearity", -127, 127),
    RowOf<&AxisParameters::Amplitude, AxisParameters>("Amplitude", -127, 127),
    RowOf<&AxisParameters::Position, AxisParameters>("Position", -32767, 32767),
    RowOf<&AxisParameters::Stadium, AxisParameters>("Stadium", 0, 1),
}};

// The two fields outside the per-axis records are converted to 16 bits before their range is looked
// at.
bool StoreShort(std::int64_t value, std::int16_t high, std::int16_t& field) {
  const auto number = NarrowTo<std::int16_t>(value);
  if (number < 0 || number > high) return false;
  field = number;
  return true;
}

bool OpticalAccepted(std::int16_t optical, std::int16_t projection_flag) {
  return projection_flag == 0 ? -64 <= optical && optical <= 16 : -16 <= optical && optical <= 64;
}

template <typename Record, std::size_t kRows>
void WriteFields(const std::array<FieldRow<Record>, kRows>& rows,
                 const std::array<Record, kAxisCount>& records, std::vector<std::string>& lines) {
  for (const FieldRow<Record>& row : rows) {
    for (const Axis axis : {kHorizontal, kVertical}) {
      lines.push_back(IntegerLine(row.key, kSuffixes[axis], row.load(records[axis])));
    }
  }
}

}  // namespace

WltFile::WltFile(const FormatTargets& targets)
    : CurveFileModule(kHeaders, true),
      staging_(targets.staging),
      live_(targets.global.Correction) {}

bool WltFile::StoreValue(const FieldKey& key, std::int64_t value) {
  if (key.name == kScreenType) {
    return StoreShort(value, kScreenTypeCount - 1, staging_.ScreenType);
  }
  if (key.name == kProjection) return StoreShort(value, 1, staging_.Projection[key.axis]);
  const auto number = NarrowTo<std::int32_t>(value);
  if (key.name == kDistortion) return StoreDistortion(key.axis, number);
  std::optional<bool> stored = StoreField(kParameters, key.name, number, staging_.Axes[key.axis]);
  if (!stored) stored = StoreCurveField(key.name, key.slot, number, staging_.Curves[key.axis]);
  return stored.value_or(false);
}

bool WltFile::StoreDistortion(Axis axis, std::int32_t value) {
  AxisParameters& parameters = staging_.Axes[axis];
  // Unlike every other field, one out of range does not keep its old value.
  parameters.Distortion = 0;
  if (!*StoreField(kParameters, kDistortion, value, parameters)) return false;
  if (FileVersion() == 2) parameters.Distortion = RoundTo<std::int16_t>(value / 3.0);
  return true;
}

bool WltFile::CheckContents() {
  constexpr std::array kAxes{kHorizontal, kVertical};
  return std::all_of(kAxes.begin(), kAxes.end(), [this](Axis axis) {
    return CurveAccepted(staging_.Curves[axis]) &&
           OpticalAccepted(staging_.Axes[axis].Optical, staging_.Projection[axis]);
  });
}

bool WltFile::Write(std::vector<std::string>& lines) const {
  lines.emplace_back(kHeaders.back().text);
  lines.push_back(IntegerLine(kScreenType, "", live_.ScreenType));
  for (const Axis axis : {kHorizontal, kVertical}) {
    lines.push_back(IntegerLine(kProjection, kSuffixes[axis], live_.Projection[axis]));
  }
  WriteFields(kParameters, live_.Axes, lines);
  WriteFields(kCurveFields, live_.Curves, lines);
  try {
    for (std::size_t slot = 0; slot < kMaxCurvePoints; ++slot) {
      for (const Axis axis : {kHorizontal, kVertical}) {
        WritePoint(live_.Curves[axis], slot, kSuffixes[axis], lines);
      }
    }
  } catch (const Fault&) {
    return false;
  }
  return true;
}

}  // namespace warpline
