#include "ui/LSSwedit_graph.h"

#include <wx/dcbuffer.h>
#include <wx/graphics.h>

#include <algorithm>
#include <array>
#include <memory>
#include <utility>

#include "toolkit/native/drag_pointer.h"

namespace warpline {
namespace {

// The grid at its smallest, in DIP.
constexpr int kLeastGraphWidth = 600;
constexpr int kLeastGraphHeight = 150;
constexpr int kShiftStep = 10;

struct PointKey {
  int key;
  int dx;  // graph units
  int dy;
};

constexpr std::array<PointKey, 8> kPointKeys{{
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

WaveGraph::WaveGraph(wxWindow* parent, CurveEditor& editor, WaveWords words, const wxString& label,
                     Handlers handlers)
    : wxWindow(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize,
               wxWANTS_CHARS | wxFULL_REPAINT_ON_RESIZE | wxBORDER_THEME, "WaveGraph"),
      editor_(editor),
      words_(std::move(words)),
      handlers_(std::move(handlers)) {
  SetLabel(label);
  SetBackgroundStyle(wxBG_STYLE_PAINT);
  const GraphMargins margins = Look().margins;
  SetMinClientSize(
      FromDIP(wxSize(kLeastGraphWidth, kLeastGraphHeight)) +
      wxSize(wxRound(margins.left + margins.right), wxRound(margins.top + margins.bottom)));
  Bind(wxEVT_PAINT, &WaveGraph::OnPaint, this);
  Bind(wxEVT_LEFT_DOWN, &WaveGraph::OnPress, this);
  Bind(wxEVT_LEFT_DCLICK, &WaveGraph::OnDoubleClick, this);
  Bind(wxEVT_MOTION, &WaveGraph::OnMotion, this);
  Bind(wxEVT_ENTER_WINDOW, [this](wxMouseEvent& event) { Hover(UnitsOf(event)); });
  Bind(wxEVT_LEAVE_WINDOW, [this](wxMouseEvent&) { Hover(std::nullopt); });
  Bind(wxEVT_LEFT_UP, [this](wxMouseEvent&) { LetGo(); });
  Bind(wxEVT_MOUSE_CAPTURE_LOST, [this](wxMouseCaptureLostEvent&) { LetGo(); });
  Bind(wxEVT_KEY_DOWN, &WaveGraph::OnKey, this);
  Bind(wxEVT_CHAR_HOOK, &WaveGraph::OnEscape, this);
  BindFocus();
}

// A key may be let go where the graph does not hear of it.
void WaveGraph::BindFocus() {
  Bind(wxEVT_KEY_UP, [this](wxKeyEvent& event) {
    editor_.ReleaseKey();
    handlers_.settled();
    event.Skip();
  });
  Bind(wxEVT_SET_FOCUS, [this](wxFocusEvent& event) {
    Refresh(false);
    event.Skip();
  });
  Bind(wxEVT_KILL_FOCUS, [this](wxFocusEvent& event) {
    Refresh(false);
    editor_.ReleaseKey();
    CallAfter(handlers_.settled);
    event.Skip();
  });
}

WaveLook WaveGraph::Look() const {
  const wxSize size = GetClientSize();
  constexpr int kMany = 100;
  const double dip = static_cast<double>(FromDIP(kMany)) / kMany;
  const auto width = [this](const wxString& text) { return double(GetTextExtent(text).x); };
  const double right = std::max(width(words_.top), width(words_.foot));
  return {.width = static_cast<double>(size.x),
          .height = static_cast<double>(size.y),
          .dip = dip,
          .margins = WaveMargins(dip, width(kWidestFigure), right, GetCharHeight()),
          .focused = HasFocus(),
          .pointer = pointer_,
          .font = GetFont(),
          .words = words_};
}

wxPoint WaveGraph::PixelOf(GraphPosition position) const {
  const GraphPlace pixel = PlaceWave(Look()).ToPixels(
      {static_cast<double>(position.x), static_cast<double>(position.y)});
  return {wxRound(pixel.x), wxRound(pixel.y)};
}

GraphPosition WaveGraph::UnitsOf(const wxMouseEvent& event) const {
  return PlaceWave(Look()).ToUnits(
      {static_cast<double>(event.GetX()), static_cast<double>(event.GetY())});
}

void WaveGraph::OnPaint(wxPaintEvent&) {
  wxAutoBufferedPaintDC dc(this);
  const std::unique_ptr<wxGraphicsContext> context(wxGraphicsContext::Create(dc));
  if (context) PaintWave(*context, editor_, Look());
}

void WaveGraph::OnPress(wxMouseEvent& event) {
  SetFocus();
  const GraphPosition position = UnitsOf(event);
  editor_.Press(position.x, position.y);
  if (editor_.Dragging()) HoldDragPointer(*this);
  Changed();
}

void WaveGraph::OnMotion(wxMouseEvent& event) {
  const GraphPosition position = UnitsOf(event);
  Hover(position);
  if (!editor_.Dragging()) return;
  if (!event.LeftIsDown()) {  // let go where nobody heard of it
    LetGo();
    return;
  }
  editor_.Drag(position.x, position.y);
  Changed();
}

// The pointer tells what can be grabbed, and what is grabbed already.
void WaveGraph::Hover(std::optional<GraphPosition> pointer) {
  const auto under = [this](const std::optional<GraphPosition>& at) {
    return at ? editor_.PointUnder(at->x, at->y) : std::nullopt;
  };
  if (under(pointer) != under(pointer_)) Refresh(false);
  pointer_ = pointer;
  const bool hand = editor_.Dragging() || under(pointer_);
  if (hand != hand_) SetCursor(hand ? wxCursor(wxCURSOR_HAND) : wxNullCursor);
  hand_ = hand;
}

// The second press of a double click grabs the point once more.
void WaveGraph::OnDoubleClick(wxMouseEvent& event) {
  const GraphPosition position = UnitsOf(event);
  editor_.Press(position.x, position.y);
  editor_.Release();
  ReleaseDragPointer(*this);
  Changed();
  if (editor_.SelectedPoint()) handlers_.exact();
}

void WaveGraph::LetGo() {
  const bool dragged = editor_.Dragging();
  editor_.Release();
  ReleaseDragPointer(*this);
  if (dragged) handlers_.settled();
}

// In a drag Escape does not mean the window.
void WaveGraph::OnEscape(wxKeyEvent& event) {
  if (event.GetKeyCode() != WXK_ESCAPE || !editor_.Dragging()) {
    event.Skip();
    return;
  }
  editor_.CancelDrag();
  ReleaseDragPointer(*this);
  Changed();
}

void WaveGraph::OnKey(wxKeyEvent& event) {
  if (event.GetKeyCode() == WXK_TAB && !event.ControlDown()) {
    ChooseByTab(!event.ShiftDown());
    return;
  }
  const auto arrow = std::find_if(kPointKeys.begin(), kPointKeys.end(), [&](const PointKey& each) {
    return each.key == event.GetKeyCode();
  });
  if (arrow == kPointKeys.end() || event.ControlDown() || event.AltDown()) {
    event.Skip();
    return;
  }
  const int step = event.ShiftDown() ? kShiftStep : 1;
  editor_.MoveSelected(step * arrow->dx, step * arrow->dy);
  Changed();
}

// Beyond the last point, or before the first one, the focus goes on to the next control.
void WaveGraph::ChooseByTab(bool forward) {
  const bool chosen = forward ? editor_.SelectNext() : editor_.SelectPrevious();
  Changed();
  if (chosen) return;
  Navigate(forward ? wxNavigationKeyEvent::IsForward : wxNavigationKeyEvent::IsBackward);
}

void WaveGraph::Changed() {
  Refresh(false);
  handlers_.changed();
}

}  // namespace warpline
