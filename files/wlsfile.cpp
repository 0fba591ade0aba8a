#include "files/wlsfile.h"

#include "core/fault.h"

namespace warpline {
namespace {

constexpr std::array<HeaderRow, 2> kWlsHeaders{{
    {"[Warpline Shape File]", 1, true, 1, 8},
    {"[Warpline Shape File 2.0]", 2, true, 2, 16},
}};

}  // namespace

WlsFile::WlsFile(CurveDefinition& curve) : CurveFileModule(kWlsHeaders, false), curve_(curve) {}

bool WlsFile::StoreValue(const FieldKey& key, std::int64_t value) {
  return StoreCurveField(key.name, key.slot, NarrowTo<std::int32_t>(value), curve_).value_or(false);
}

bool WlsFile::Write(std::vector<std::string>& lines) const {
  lines.emplace_back(kWlsHeaders.back().text);
  for (const FieldRow<CurveDefinition>& row : kCurveFields) {
    lines.push_back(IntegerLine(row.key, "", row.load(curve_)));
  }
  try {
    for (std::size_t slot = 0; slot < kMaxCurvePoints; ++slot) WritePoint(curve_, slot, "", lines);
  } catch (const Fault&) {
    return false;
  }
  return true;
}

}  // namespace warpline
