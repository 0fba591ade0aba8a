#include "ui/overlay_painter.h"

#include <wx/brush.h>
#include <wx/graphics.h>
#include <wx/settings.h>
#include <wx/window.h>

#include <algorithm>
#include <utility>

#include "ui/wx_text.h"

namespace warpline {
namespace {

// Shares of the window's height. On a picture 1 m high capitals and figures, which are about 0.7 of
// their font, are at least 29 mm high: 20 minutes of arc from 5 m. So are the heading's small
// letters, about 0.5 of it.
constexpr double kHeading = 1.0 / 17;
constexpr double kOverlayLine = 1.0 / 11;
constexpr double kNote = 1.0 / 24;
constexpr double kOverlayEdge = 1.0 / 30;

constexpr double kWidest = 0.92;  // of the window's width
constexpr double kGroundAlpha = 200;

wxFont FontOf(double height) {
  wxFont font = wxSystemSettings::GetFont(wxSYS_DEFAULT_GUI_FONT);
  font.SetPixelSize(wxSize(0, std::max(6, wxRound(height))));
  return font;
}

// Puts lines under each other, from (0, 0) on, each as large as the room lets it be.
class Stack {
 public:
  Stack(const wxWindow& window, double unit, double room)
      : window_(window), unit_(unit), room_(room) {}

  void Add(const std::string& text, double height) {
    if (text.empty()) return;
    OverlayLayout::Line line{WxText(text), FontOf(height * unit_), wxPoint(0, size_.y), {}};
    Measure(line);
    if (line.size.x > room_) {
      line.font = FontOf(height * unit_ * room_ / line.size.x);
      Measure(line);
    }
    size_ = wxSize(std::max(size_.x, line.size.x), size_.y + line.size.y);
    lines_.push_back(std::move(line));
  }

  const wxSize& Size() const { return size_; }
  std::vector<OverlayLayout::Line> Lines() && { return std::move(lines_); }

 private:
  void Measure(OverlayLayout::Line& line) const {
    window_.GetTextExtent(line.text, &line.size.x, &line.size.y, nullptr, nullptr, &line.font);
  }

  const wxWindow& window_;
  double unit_;
  double room_;
  wxSize size_;
  std::vector<OverlayLayout::Line> lines_;
};

Stack StackOf(const wxWindow& window, const PictureOverlay& overlay, double unit, double room) {
  Stack stack(window, unit, room);
  stack.Add(overlay.heading, kHeading);
  stack.Add(overlay.line, kOverlayLine);
  for (const std::string& note : overlay.notes) stack.Add(note, kNote);
  return stack;
}

wxPoint CornerOf(OverlayPlace place, const wxSize& own, const wxSize& size, int edge) {
  const bool left = place == OverlayPlace::kTopLeft || place == OverlayPlace::kBottomLeft;
  const bool top = place == OverlayPlace::kTopLeft || place == OverlayPlace::kTopRight;
  if (place == OverlayPlace::kMiddle) return {(size.x - own.x) / 2, (size.y - own.y) / 2};
  return {left ? edge : size.x - own.x - edge, top ? edge : size.y - own.y - edge};
}

// A context may size fonts by the scale of the display: what it draws takes the room that was
// measured.
void DrawLine(wxGraphicsContext& context, const OverlayLayout::Line& line) {
  double width = 0;
  double height = 0;
  context.GetTextExtent(line.text, &width, &height);
  if (width <= 0) return;
  context.PushState();
  context.Translate(line.at.x, line.at.y);
  context.Scale(line.size.x / width, line.size.x / width);
  context.DrawText(line.text, 0, 0);
  context.PopState();
}

}  // namespace

OverlayLayout LayOverlay(const wxWindow& window, const PictureOverlay& overlay, OverlayPlace place,
                         const wxSize& size) {
  const int edge = wxRound(kOverlayEdge * size.y);
  Stack stack = StackOf(window, overlay, size.y, kWidest * size.x - 2 * edge);
  const wxSize own = stack.Size() + wxSize(2 * edge, 2 * edge);
  OverlayLayout layout{wxRect(CornerOf(place, own, size, edge), own), std::move(stack).Lines()};
  for (OverlayLayout::Line& line : layout.lines) {
    line.at += layout.area.GetPosition() + wxPoint(edge, edge);
  }
  return layout;
}

void PaintOverlay(wxGraphicsContext& context, const OverlayLayout& layout, double opacity) {
  const auto alpha = [opacity](double full) {
    return static_cast<unsigned char>(wxRound(full * opacity));
  };
  context.SetPen(*wxTRANSPARENT_PEN);
  context.SetBrush(wxBrush(wxColour(0, 0, 0, alpha(kGroundAlpha))));
  const wxRect& area = layout.area;
  context.DrawRectangle(area.x, area.y, area.width, area.height);
  for (const OverlayLayout::Line& line : layout.lines) {
    context.SetFont(line.font, wxColour(255, 255, 255, alpha(255)));
    DrawLine(context, line);
  }
}

}  // namespace warpline
