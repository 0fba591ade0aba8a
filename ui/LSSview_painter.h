#pragma once

#include "app/preview_geometry.h"

class wxGraphicsContext;

namespace warpline {

// Draws the shapes of a preview into a client area of that size (in the context's units), the model
// panel as large as it fits. The ground is not touched. dip is what a device-independent pixel
// measures in the context's units.
void PaintPreview(wxGraphicsContext& context, const PreviewDrawing& drawing, double width,
                  double height, double dip = 1);

}  // namespace warpline
