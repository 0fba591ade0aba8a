#pragma once

#include <optional>
#include <string>

#include "core/LSSglobal.h"
#include "picture/deviation.h"

namespace warpline {

// The deviation to show beside a correction that is being edited. Nothing where no registers can be
// built, which whoever builds them will say.
std::optional<Deviation> FindDeviation(const CorrectionData& correction, PanelSize panel);

// A sentence that says between which lines an axis is off, and by how many pixels at most, in the
// language in force. Empty when the projector follows.
std::string DeviationText(const LSSglobal& global, Axis axis, const AxisDeviation& deviation);

// How far the worse axis is off, in pixels with a tenth.
std::string DeviationPixels(const Deviation& deviation);

// Those of both axes, one behind the other.
std::string DeviationText(const LSSglobal& global, const Deviation& deviation);

}  // namespace warpline
