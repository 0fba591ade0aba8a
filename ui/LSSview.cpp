#include "ui/LSSview.h"

#include <wx/dcbuffer.h>
#include <wx/graphics.h>

#include <memory>
#include <utility>

#include "ui/LSSview_painter.h"

namespace warpline {

LSSview::LSSview(wxWindow* owner, const wxString& title, std::function<void()> on_close)
    : wxFrame(owner, wxID_ANY, title, wxDefaultPosition, wxDefaultSize,
              wxCAPTION | wxCLOSE_BOX | wxRESIZE_BORDER | wxFRAME_FLOAT_ON_PARENT |
                  wxFRAME_NO_TASKBAR | wxCLIP_CHILDREN,
              "LSSview"),
      on_close_(std::move(on_close)),
      canvas_(new wxWindow(this, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                           wxWANTS_CHARS | wxFULL_REPAINT_ON_RESIZE, "preview_canvas")) {
  canvas_->SetLabel(title);
  canvas_->SetBackgroundStyle(wxBG_STYLE_PAINT);
  canvas_->SetMinSize(FromDIP(wxSize(160, 120)));
  canvas_->Bind(wxEVT_PAINT, &LSSview::OnPaint, this);
  Bind(wxEVT_CHAR_HOOK, &LSSview::OnKey, this);
  Bind(wxEVT_CLOSE_WINDOW, &LSSview::OnClose, this);
}

void LSSview::SetDrawing(PreviewDrawing drawing) {
  drawing_ = std::move(drawing);
  canvas_->Refresh(false);
}

void LSSview::SetPictureSize(const wxSize& dip) {
  SetClientSize(FromDIP(dip));
}

void LSSview::OnPaint(wxPaintEvent&) {
  wxAutoBufferedPaintDC dc(canvas_);
  dc.SetBackground(*wxBLACK_BRUSH);
  dc.Clear();
  const std::unique_ptr<wxGraphicsContext> context(wxGraphicsContext::Create(dc));
  if (!context) return;
  const wxSize size = canvas_->GetClientSize();
  const double dip = canvas_->FromDIP(100) / 100.0;
  PaintPreview(*context, drawing_, size.x, size.y, dip);
  if (aux_lines_) PaintPreview(*context, DrawAuxLine(), size.x, size.y, dip);
}

void LSSview::OnKey(wxKeyEvent& event) {
  if (event.GetKeyCode() != 'A' || event.HasAnyModifiers()) {
    event.Skip();
    return;
  }
  aux_lines_ = !aux_lines_;
  canvas_->Refresh(false);
}

// The window lives as long as its owner: closing it by hand only hides it.
void LSSview::OnClose(wxCloseEvent& event) {
  if (!event.CanVeto()) {
    event.Skip();
    return;
  }
  event.Veto();
  Hide();
  on_close_();
}

}  // namespace warpline
