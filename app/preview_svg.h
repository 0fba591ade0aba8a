#pragma once

#include <string>

#include "app/preview_geometry.h"

// The preview drawing as a picture file.

namespace warpline {

// A whole SVG document (UTF-8) in model units, on black ground. The view is the model panel, made
// larger where a shape reaches beyond it, and a narrow margin. Coordinates have at most three
// decimals.
std::string PreviewSvg(const PreviewDrawing& drawing);

}  // namespace warpline
