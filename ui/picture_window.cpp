#include "ui/picture_window.h"

#include <wx/dcbuffer.h>
#include <wx/graphics.h>
#include <wx/image.h>

#include <utility>

#include "toolkit/native/full_screen.h"
#include "ui/picture_keys.h"
#include "ui/slider_keys.h"

namespace warpline {
namespace {

// How long a window manager may take to do what it is asked, and how often the fading shows, in
// milliseconds.
constexpr int kPlaceTime = 500;
constexpr int kFadeStep = 40;

}  // namespace

PictureWindow::PictureWindow(wxWindow* owner, const wxString& title, PictureControl& control,
                             Handlers handlers)
    : wxFrame(owner, wxID_ANY, title, wxDefaultPosition, wxDefaultSize, wxBORDER_NONE,
              "picture_window"),
      control_(control),
      handlers_(std::move(handlers)),
      canvas_(new wxWindow(this, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                           wxWANTS_CHARS | wxFULL_REPAINT_ON_RESIZE, "picture_canvas")) {
  canvas_->SetLabel(title);
  canvas_->SetBackgroundStyle(wxBG_STYLE_PAINT);
  canvas_->SetCursor(wxCursor(wxCURSOR_BLANK));
  // The display's size is in pixels, whatever the display's scale is.
  Bind(wxEVT_DPI_CHANGED, [](wxDPIChangedEvent&) {});
  canvas_->Bind(wxEVT_PAINT, &PictureWindow::OnPaint, this);
  canvas_->Bind(wxEVT_KEY_DOWN, &PictureWindow::OnKeyDown, this);
  canvas_->Bind(wxEVT_KEY_UP, &PictureWindow::OnKeyUp, this);
  Bind(wxEVT_CLOSE_WINDOW, &PictureWindow::OnClose, this);
  check_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { CheckPlace(); });
  fade_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { RefreshOverlay(); });
}

// The picture is ready before the window shows, so that nothing else is seen first.
void PictureWindow::ShowOn(const DisplayPlace& display) {
  if (IsShown()) LeaveFullScreen(*this);
  display_ = display;
  mended_ = false;
  const double scale = static_cast<double>(display.Pixels.x) / display.Area.width;
  const bool whole = scale == wxRound(scale);
  control_.Begin({{display.Pixels.x, display.Pixels.y}, whole ? 100 : wxRound(100 * scale)});
  ShowPicture();
  Place();
  if (!awake_) awake_ = std::make_unique<DisplaysAwake>(GetTitle().utf8_str());
}

// First to the display, then over all of it: the system takes the display that the window is on.
void PictureWindow::Place() {
  SetSize(display_.Area);
  Show();
  Raise();
  canvas_->SetFocus();
  CallAfter([this] {
    if (IsShown()) FillDisplay(*this, display_.Number);
  });
  check_.StartOnce(kPlaceTime);
}

void PictureWindow::CheckPlace() {
  if (!IsShown() || mended_ || canvas_->GetScreenRect() == display_.Area) return;
  mended_ = true;
  LeaveFullScreen(*this);
  Place();
}

void PictureWindow::End() {
  if (!IsShown()) return;
  check_.Stop();
  fade_.Stop();
  LeaveFullScreen(*this);
  Hide();
  awake_.reset();
}

void PictureWindow::ShowPicture() {
  RgbImage image = control_.Picture();
  const wxImage pixels(image.Width, image.Height, image.Pixels.data(), true);
  const double scale = static_cast<double>(display_.Pixels.x) / display_.Area.width;
  picture_ = wxBitmap(pixels, wxBITMAP_SCREEN_DEPTH, scale);
  canvas_->Refresh(false);
  ShowOverlay();
}

void PictureWindow::ShowOverlay() {
  canvas_->RefreshRect(overlay_.area, false);
  overlay_ = LayOverlay(*canvas_, control_.Overlay(), control_.Place(), display_.Area.GetSize());
  opacity_ = -1;
  fade_.Start(kFadeStep);
  RefreshOverlay();
}

void PictureWindow::RefreshOverlay() {
  const double opacity = control_.Opacity();
  if (opacity == opacity_) return;
  opacity_ = opacity;
  canvas_->RefreshRect(overlay_.area, false);
  if (opacity == 0) fade_.Stop();
}

void PictureWindow::OnPaint(wxPaintEvent&) {
  wxAutoBufferedPaintDC dc(canvas_);
  if (picture_.IsOk()) dc.DrawBitmap(picture_, 0, 0);
  if (opacity_ <= 0) return;
  const std::unique_ptr<wxGraphicsContext> context(wxGraphicsContext::Create(dc));
  if (context) PaintOverlay(*context, overlay_, opacity_);
}

void PictureWindow::OnKeyDown(wxKeyEvent& event) {
  if (!handlers_.takes_keys()) return;
  const int key = event.GetKeyCode();
  const SliderKey* moves = event.ControlDown() || event.AltDown() ? nullptr : FindSliderKey(key);
  if (moves != nullptr) {
    if (key != WXK_SHIFT) control_.Step(moves->steps, moves->large_steps);
    ShowOverlay();
    return;
  }
  switch (PressPictureKey(control_, key, event.GetModifiers())) {
    case PictureKeyDone::kNothing:
      return event.Skip();
    case PictureKeyDone::kOther:
      return ShowOverlay();
    case PictureKeyDone::kPicture:
      return ShowPicture();
    case PictureKeyDone::kFile:
      return canvas_->CallAfter([this] { TakePictureFile(); });
    case PictureKeyDone::kEnd:
      return handlers_.ended();
  }
}

void PictureWindow::TakePictureFile() {
  const std::filesystem::path file = handlers_.choose();
  if (!file.empty() && control_.TakeOwnPicture(file)) ShowPicture();
  canvas_->SetFocus();
}

void PictureWindow::OnKeyUp(wxKeyEvent& event) {
  const SliderKey* key = FindSliderKey(event.GetKeyCode());
  if (key == nullptr || !handlers_.takes_keys()) return;
  // Some systems still report Shift as held when it is Shift that goes up.
  const bool shift_alone =
      key->key != WXK_SHIFT && event.ShiftDown() && !event.ControlDown() && !event.AltDown();
  canvas_->CallAfter([this, code = key->code, shift_alone] {
    control_.Release(code, shift_alone);
    ShowOverlay();
  });
}

// The window lives as long as its owner: closing it by hand only ends the picture.
void PictureWindow::OnClose(wxCloseEvent& event) {
  if (!event.CanVeto()) {
    event.Skip();
    return;
  }
  event.Veto();
  handlers_.ended();
}

}  // namespace warpline
