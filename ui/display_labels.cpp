#include "ui/display_labels.h"

#include <wx/dcbuffer.h>
#include <wx/graphics.h>

#include <memory>

#include "ui/overlay_painter.h"

namespace warpline {
namespace {

const wxColour kMarked(0, 84, 180);

// In the middle, or in a corner where it would cover the menu that it is shown for.
OverlayLayout LayLabel(wxWindow& owner, wxWindow& label, const DisplayPlace& display,
                       const PictureOverlay& text) {
  const wxSize size = display.Area.GetSize();
  OverlayLayout layout = LayOverlay(label, text, OverlayPlace::kMiddle, size);
  wxRect on_screen = layout.area;
  on_screen.Offset(display.Area.GetPosition());
  if (!on_screen.Intersects(owner.GetScreenRect())) return layout;
  return LayOverlay(label, text, OverlayPlace::kBottomRight, size);
}

wxPopupWindow* CreateLabel(wxWindow& owner, const DisplayPlace& display, const PictureOverlay& text,
                           bool marked) {
  auto* label = new wxPopupWindow(&owner);
  label->SetName("display_label");
  label->SetBackgroundStyle(wxBG_STYLE_PAINT);
  label->Bind(wxEVT_DPI_CHANGED, [](wxDPIChangedEvent&) {});  // its size is that of its display
  OverlayLayout layout = LayLabel(owner, *label, display, text);
  const wxRect area = layout.area;
  for (OverlayLayout::Line& line : layout.lines) line.at -= area.GetPosition();
  layout.area = wxRect();
  label->Bind(wxEVT_PAINT, [label, layout, marked](wxPaintEvent&) {
    wxAutoBufferedPaintDC dc(label);
    dc.SetBackground(wxBrush(marked ? kMarked : *wxBLACK));
    dc.Clear();
    const std::unique_ptr<wxGraphicsContext> context(wxGraphicsContext::Create(dc));
    if (context) PaintOverlay(*context, layout, 1);
  });
  label->SetSize(wxRect(display.Area.GetPosition() + area.GetPosition(), area.GetSize()));
  return label;
}

}  // namespace

void DisplayLabels::Show(wxWindow& owner, const std::vector<DisplayPlace>& displays,
                         const std::vector<PictureOverlay>& texts, std::size_t marked) {
  Hide();
  for (std::size_t i = 0; i < displays.size(); ++i) {
    labels_.emplace_back(CreateLabel(owner, displays[i], texts[i], i == marked));
    labels_.back()->Show();
  }
}

void DisplayLabels::Hide() {
  for (const auto& label : labels_) {
    if (label) label->Destroy();
  }
  labels_.clear();
}

}  // namespace warpline
