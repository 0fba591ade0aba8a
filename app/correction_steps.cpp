#include "app/correction_steps.h"

#include <algorithm>

#include "core/parameters.h"

namespace warpline {
namespace {

AxisParameters HeldParameters(AxisParameters parameters, std::int16_t from_flag,
                              std::int16_t to_flag) {
  if ((from_flag != 0) != (to_flag != 0)) {
    parameters.Optical = static_cast<std::int16_t>(-parameters.Optical);
  }
  const Range optical = WindowRange(ParameterField::kOptical, to_flag);
  parameters.Optical =
      static_cast<std::int16_t>(std::clamp<int>(parameters.Optical, optical.low, optical.high));
  return parameters;
}

}  // namespace

void CopyAxis(CorrectionData& correction, Axis from, Axis to) {
  correction.Axes[to] =
      HeldParameters(correction.Axes[from], correction.Projection[from], correction.Projection[to]);
  correction.Curves[to] = correction.Curves[from];
}

void SwapAxes(CorrectionData& correction) {
  const CorrectionData before = correction;
  CopyAxis(correction, kHorizontal, kVertical);
  correction.Axes[kHorizontal] = HeldParameters(
      before.Axes[kVertical], before.Projection[kVertical], before.Projection[kHorizontal]);
  correction.Curves[kHorizontal] = before.Curves[kVertical];
}

}  // namespace warpline
