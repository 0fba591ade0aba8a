#include "sim/window/canvas.h"

#include <wx/dcbuffer.h>
#include <wx/graphics.h>
#include <wx/image.h>

#include <algorithm>
#include <memory>

namespace warpline::sim {

Canvas::Canvas(wxWindow* parent) : wxPanel(parent, wxID_ANY) {
  SetBackgroundStyle(wxBG_STYLE_PAINT);
  SetMinSize(FromDIP(wxSize(160, 120)));
  SetName("canvas");
  Bind(wxEVT_PAINT, &Canvas::Paint, this);
  Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
    Refresh();
    event.Skip();
  });
  Bind(wxEVT_LEFT_DOWN, &Canvas::Drag, this);
  Bind(wxEVT_MOTION, &Canvas::Drag, this);
}

void Canvas::Show(const RgbImage& image) {
  // The toolkit only reads the pixels here.
  auto* const pixels = const_cast<std::uint8_t*>(image.Pixels.data());
  bitmap_ = wxBitmap(wxImage(image.Width, image.Height, pixels, true));
  Refresh();
}

void Canvas::SetZoom(int zoom) {
  zoom_ = zoom;
  offset_ = {};
  Refresh();
}

void Canvas::Paint(wxPaintEvent&) {
  wxAutoBufferedPaintDC dc(this);
  dc.SetBackground(*wxBLACK_BRUSH);
  dc.Clear();
  const std::unique_ptr<wxGraphicsContext> context(wxGraphicsContext::Create(dc));
  if (!context || !bitmap_.IsOk()) return;
  if (zoom_ > 0) {
    PaintEnlarged(*context);
  } else {
    PaintFitted(*context);
  }
}

void Canvas::PaintFitted(wxGraphicsContext& context) const {
  const wxSize client = GetClientSize();
  const double width = bitmap_.GetWidth();
  const double height = bitmap_.GetHeight();
  const double scale = std::min(client.GetWidth() / width, client.GetHeight() / height);
  context.SetInterpolationQuality(wxINTERPOLATION_GOOD);
  context.DrawBitmap(bitmap_, (client.GetWidth() - width * scale) / 2,
                     (client.GetHeight() - height * scale) / 2, width * scale, height * scale);
}

// The toolkit smooths what it enlarges, so the part in view is made of squares here, and laid on
// whole pixels of the screen.
void Canvas::PaintEnlarged(wxGraphicsContext& context) const {
  const double screen = GetContentScaleFactor();
  const wxSize client = GetClientSize() * screen;
  const wxSize size = bitmap_.GetSize();
  const wxPoint offset = offset_ * screen;
  const wxPoint corner{(client.x - size.x * zoom_) / 2 + offset.x,
                       (client.y - size.y * zoom_) / 2 + offset.y};
  wxRect part(-corner.x / zoom_, -corner.y / zoom_, client.x / zoom_ + 2, client.y / zoom_ + 2);
  part.Intersect(wxRect(size));
  if (part.IsEmpty()) return;
  const wxImage squares = bitmap_.GetSubBitmap(part).ConvertToImage().Scale(
      part.width * zoom_, part.height * zoom_, wxIMAGE_QUALITY_NEAREST);
  context.DrawBitmap(wxBitmap(squares), (corner.x + part.x * zoom_) / screen,
                     (corner.y + part.y * zoom_) / screen, squares.GetWidth() / screen,
                     squares.GetHeight() / screen);
}

void Canvas::Drag(wxMouseEvent& event) {
  event.Skip();
  if (event.Dragging() && event.LeftIsDown() && zoom_ > 0) {
    offset_ += event.GetPosition() - grabbed_;
    Refresh();
  }
  grabbed_ = event.GetPosition();
}

}  // namespace warpline::sim
