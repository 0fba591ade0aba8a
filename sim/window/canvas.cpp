#include "sim/window/canvas.h"

#include <wx/dcbuffer.h>
#include <wx/graphics.h>
#include <wx/image.h>

#include <algorithm>
#include <memory>

namespace warpline::sim {

Canvas::Canvas(wxWindow* parent) : wxPanel(parent, wxID_ANY) {
  SetBackgroundStyle(wxBG_STYLE_PAINT);
  SetMinSize(FromDIP(wxSize(320, 240)));
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
  if (!bitmap_.IsOk()) return;
  const wxSize client = GetClientSize();
  const double width = bitmap_.GetWidth();
  const double height = bitmap_.GetHeight();
  const double scale = zoom_ > 0 ? zoom_ / GetContentScaleFactor()
                                 : std::min(client.GetWidth() / width, client.GetHeight() / height);
  const std::unique_ptr<wxGraphicsContext> context(wxGraphicsContext::Create(dc));
  if (!context) return;
  context->SetInterpolationQuality(zoom_ > 0 ? wxINTERPOLATION_NONE : wxINTERPOLATION_GOOD);
  context->DrawBitmap(bitmap_, (client.GetWidth() - width * scale) / 2 + offset_.x,
                      (client.GetHeight() - height * scale) / 2 + offset_.y, width * scale,
                      height * scale);
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
