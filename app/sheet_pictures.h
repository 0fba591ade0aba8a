#pragma once

#include <string>
#include <string_view>

#include "core/correction.h"

// The drawings of the setup sheet beside the preview, as SVG elements to stand in a page.

namespace warpline {

// What a screen of that type (0..5) looks like from the projector.
std::string_view ScreenPicture(std::int16_t type);

// A curve over the editor's grid with its figures and its points. Throws Fault for a curve that
// cannot be computed.
std::string CurvePicture(const CurveDefinition& curve);

}  // namespace warpline
