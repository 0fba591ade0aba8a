#pragma once

#include <wx/bitmap.h>
#include <wx/panel.h>

#include "picture/picture.h"

class wxGraphicsContext;

namespace warpline::sim {

// Shows an image: as large as it fits, or enlarged by a whole number, when it can be dragged about.
class Canvas : public wxPanel {
 public:
  explicit Canvas(wxWindow* parent);

  void Show(const RgbImage& image);
  const wxBitmap& Shown() const { return bitmap_; }

  // 0: as large as it fits.
  void SetZoom(int zoom);

 private:
  void Paint(wxPaintEvent& event);
  void PaintFitted(wxGraphicsContext& context) const;
  void PaintEnlarged(wxGraphicsContext& context) const;
  void Drag(wxMouseEvent& event);

  wxBitmap bitmap_;
  int zoom_ = 0;
  wxPoint offset_;  // of the image's middle from the window's, window pixels
  wxPoint grabbed_;
};

}  // namespace warpline::sim
