#include "ui/LSSwedit_graph.h"

#include <wx/dcbuffer.h>
#include <wx/graphics.h>

#include <algorithm>
#include <array>
#include <memory>
#include <utility>

namespace warpline {
namespace {

// The graph at its smallest, margins included, in DIP.
constexpr int kLeastWidth = 676;
constexpr int kLeastHeight = 206;
constexpr int kShiftStep = 10;

struct ArrowKey {
  int key;
  int dx;  // graph units
  int dy;
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

WaveGraph::WaveGraph(wxWindow* parent, CurveEditor& editor, const wxString& label,
                     std::function<void()> changed)
    : wxWindow(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize,
               wxWANTS_CHARS | wxFULL_REPAINT_ON_RESIZE | wxBORDER_THEME, "WaveGraph"),
      editor_(editor),
      changed_(std::move(changed)) {
  SetLabel(label);
  SetBackgroundStyle(wxBG_STYLE_PAINT);
  SetMinClientSize(FromDIP(wxSize(kLeastWidth, kLeastHeight)));
  Bind(wxEVT_PAINT, &WaveGraph::OnPaint, this);
  Bind(wxEVT_LEFT_DOWN, &WaveGraph::OnPress, this);
  Bind(wxEVT_LEFT_DCLICK, &WaveGraph::OnPress, this);
  Bind(wxEVT_MOTION, &WaveGraph::OnMotion, this);
  Bind(wxEVT_LEFT_UP, &WaveGraph::OnRelease, this);
  Bind(wxEVT_MOUSE_CAPTURE_LOST, [this](wxMouseCaptureLostEvent&) { LetGo(); });
  Bind(wxEVT_KEY_DOWN, &WaveGraph::OnKey, this);
  for (const auto& type : {wxEVT_SET_FOCUS, wxEVT_KILL_FOCUS}) {
    Bind(type, [this](wxFocusEvent& event) {
      Refresh(false);
      event.Skip();
    });
  }
}

WaveLook WaveGraph::Look() const {
  const wxSize size = GetClientSize();
  constexpr int kMany = 100;
  const double dip = static_cast<double>(FromDIP(kMany)) / kMany;
  return {static_cast<double>(size.x), static_cast<double>(size.y), dip, HasFocus(), GetFont()};
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
  if (editor_.Dragging() && !HasCapture()) CaptureMouse();
  Changed();
}

void WaveGraph::OnMotion(wxMouseEvent& event) {
  if (!editor_.Dragging()) return;
  const GraphPosition position = UnitsOf(event);
  editor_.Drag(position.x, position.y);
  Changed();
}

void WaveGraph::OnRelease(wxMouseEvent&) {
  LetGo();
}

void WaveGraph::LetGo() {
  editor_.Release();
  if (HasCapture()) ReleaseMouse();
}

void WaveGraph::OnKey(wxKeyEvent& event) {
  if (event.GetKeyCode() == WXK_TAB && !event.ControlDown()) {
    ChooseByTab(!event.ShiftDown());
    return;
  }
  const auto arrow = std::find_if(kArrowKeys.begin(), kArrowKeys.end(), [&](const ArrowKey& each) {
    return each.key == event.GetKeyCode();
  });
  if (arrow == kArrowKeys.end() || event.ControlDown() || event.AltDown()) {
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
  changed_();
}

}  // namespace warpline
