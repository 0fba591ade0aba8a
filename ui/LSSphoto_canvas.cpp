#include "ui/LSSphoto_canvas.h"

#include <wx/dcbuffer.h>
#include <wx/graphics.h>
#include <wx/image.h>

#include <algorithm>
#include <array>
#include <memory>
#include <utility>

#include "toolkit/native/drag_pointer.h"

namespace warpline {
namespace {

constexpr int kLeastCanvasWidth = 320;  // DIP
constexpr int kLeastCanvasHeight = 240;
constexpr double kReach = 12;  // DIP, to a handle
constexpr int kShiftSteps = 10;
constexpr int kControlSteps = 100;

struct ArrowKey {
  int key;
  int right;
  int down;
};
constexpr std::array<ArrowKey, 8> kArrowKeys{{
    {WXK_LEFT, -1, 0},
    {WXK_RIGHT, 1, 0},
    {WXK_UP, 0, -1},
    {WXK_DOWN, 0, 1},
    {WXK_NUMPAD_LEFT, -1, 0},
    {WXK_NUMPAD_RIGHT, 1, 0},
    {WXK_NUMPAD_UP, 0, -1},
    {WXK_NUMPAD_DOWN, 0, 1},
}};

}  // namespace

PhotoCanvas::PhotoCanvas(wxWindow* parent, PhotoSession& session, const wxString& label,
                         const wxString& hint, Handlers handlers)
    : wxWindow(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize,
               wxWANTS_CHARS | wxFULL_REPAINT_ON_RESIZE, "photo_canvas"),
      session_(session),
      hint_(hint),
      handlers_(std::move(handlers)) {
  SetLabel(label);
  SetBackgroundStyle(wxBG_STYLE_PAINT);
  SetMinSize(FromDIP(wxSize(kLeastCanvasWidth, kLeastCanvasHeight)));
  Bind(wxEVT_PAINT, &PhotoCanvas::OnPaint, this);
  Bind(wxEVT_LEFT_DOWN, &PhotoCanvas::OnPress, this);
  Bind(wxEVT_LEFT_DCLICK, &PhotoCanvas::OnPress, this);
  Bind(wxEVT_MOTION, &PhotoCanvas::OnMotion, this);
  Bind(wxEVT_LEFT_UP, [this](wxMouseEvent&) { LetGo(); });
  Bind(wxEVT_MOUSE_CAPTURE_LOST, [this](wxMouseCaptureLostEvent&) { LetGo(); });
  Bind(wxEVT_KEY_DOWN, &PhotoCanvas::OnKey, this);
  Bind(wxEVT_CHAR_HOOK, &PhotoCanvas::OnCharHook, this);
  const auto refresh = [this](wxFocusEvent& event) {
    Refresh(false);
    event.Skip();
  };
  Bind(wxEVT_SET_FOCUS, refresh);
  Bind(wxEVT_KILL_FOCUS, refresh);
}

PhotoPlacement PhotoCanvas::Placement() const {
  return PlacePhoto(session_.Size(), GetClientSize());
}

void PhotoCanvas::ShowPhoto() {
  shown_ = wxBitmap();
  Refresh(false);
}

// Made anew only when the window has got another size.
void PhotoCanvas::OnPaint(wxPaintEvent&) {
  wxAutoBufferedPaintDC dc(this);
  const std::unique_ptr<wxGraphicsContext> context(wxGraphicsContext::Create(dc));
  if (!context) return;
  const double pixels = GetContentScaleFactor();
  const double scale = Placement().scale * pixels;
  const PhotoSize photo = session_.Size();
  const PanelSize size{std::max(2, wxRound(photo.Width * scale)),
                       std::max(2, wxRound(photo.Height * scale))};
  const bool fits = shown_.IsOk() && PanelSize{shown_.GetWidth(), shown_.GetHeight()} == size;
  if (session_.HasPhoto() && !fits) {
    RgbImage image = Resized(session_.Photo(), size);
    shown_ = wxBitmap(wxImage(size.Width, size.Height, image.Pixels.data(), true));
  }
  constexpr int kMany = 100;
  const double dip = static_cast<double>(FromDIP(kMany)) / kMany;
  PaintPhoto(*context, session_,
             {GetClientSize(), dip, shown_, hint_, HasFocus(), dragging_ || HasFocus()});
}

// While a line is drawn a press adds a point to it, unless it is on one. The second press of a
// double click ends the line.
void PhotoCanvas::OnPress(wxMouseEvent& event) {
  SetFocus();
  if (!session_.HasPhoto()) return;
  if (session_.Drawing() && event.LeftDClick()) return EndLine();
  const PhotoPlacement placement = Placement();
  const PlanePoint at = placement.ToPhoto(event.GetPosition());
  std::optional<PhotoHandle> handle = session_.HandleNear(at, FromDIP(kReach) / placement.scale);
  if (session_.Drawing() && (!handle || handle->Kind != PhotoHandleKind::kLinePoint)) {
    session_.AddPoint(at);
    handle = session_.Selected()->Handle;
  }
  session_.Select(handle);
  if (handle) {
    const PlanePoint place = session_.Selected()->At;
    grabbed_beside_ = {place.X - at.X, place.Y - at.Y};
    session_.Grab();
    dragging_ = true;
    HoldDragPointer(*this);
  }
  Changed();
}

void PhotoCanvas::OnMotion(wxMouseEvent& event) {
  if (!dragging_) return;
  if (!event.LeftIsDown()) return LetGo();  // let go where nobody heard of it
  const PlanePoint at = Placement().ToPhoto(event.GetPosition());
  session_.MoveTo({at.X + grabbed_beside_.X, at.Y + grabbed_beside_.Y});
  Changed();
}

void PhotoCanvas::LetGo() {
  if (!std::exchange(dragging_, false)) return;
  ReleaseDragPointer(*this);
  Refresh(false);
  handlers_.settled();
}

// What Escape and Enter mean to the window they do not mean in a drag or while a line is drawn.
void PhotoCanvas::OnCharHook(wxKeyEvent& event) {
  const int key = event.GetKeyCode();
  const bool enter = key == WXK_RETURN || key == WXK_NUMPAD_ENTER;
  if (key == WXK_ESCAPE && dragging_) {
    session_.LetGo(false);
    LetGo();
    Changed();
  } else if (session_.Drawing() && (key == WXK_ESCAPE || enter)) {
    EndLine();
  } else {
    event.Skip();
  }
}

void PhotoCanvas::EndLine() {
  session_.EndLine();
  Changed();
  handlers_.settled();
}

void PhotoCanvas::OnKey(wxKeyEvent& event) {
  if (event.GetKeyCode() == WXK_TAB && !event.ControlDown()) {
    SelectByTab(!event.ShiftDown());
  } else if (event.AltDown() || (!MoveByKey(event) && !ActByKey(event.GetKeyCode()))) {
    event.Skip();
  }
}

bool PhotoCanvas::MoveByKey(const wxKeyEvent& event) {
  const auto arrow = std::ranges::find(kArrowKeys, event.GetKeyCode(), &ArrowKey::key);
  if (arrow == kArrowKeys.end()) return false;
  const int steps =
      (event.ShiftDown() ? kShiftSteps : 1) * (event.ControlDown() ? kControlSteps : 1);
  session_.MoveBy(steps * arrow->right, steps * arrow->down);
  Changed();
  return true;
}

bool PhotoCanvas::ActByKey(int key) {
  if (key == WXK_DELETE || key == WXK_NUMPAD_DELETE) {
    session_.Remove();
  } else if (key == WXK_INSERT || key == WXK_NUMPAD_INSERT) {
    session_.AddPoint();
  } else if (key == WXK_PAGEDOWN || key == WXK_NUMPAD_PAGEDOWN) {
    session_.SelectNextKind();
  } else {
    return false;
  }
  Changed();
  return true;
}

// Beyond the last handle, or before the first one, the focus goes on to the next control.
void PhotoCanvas::SelectByTab(bool forward) {
  const bool selected = session_.SelectNext(forward);
  Changed();
  if (!selected) {
    Navigate(forward ? wxNavigationKeyEvent::IsForward : wxNavigationKeyEvent::IsBackward);
  }
}

void PhotoCanvas::Changed() {
  Refresh(false);
  handlers_.changed();
}

}  // namespace warpline
