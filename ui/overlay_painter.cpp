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

// Shares of the window's height. On a picture of 1.5 m the smallest text is 4 cm high.
constexpr double kHeading = 1.0 / 22;
constexpr double kLine = 1.0 / 11;
constexpr double kNote = 1.0 / 34;
constexpr double kEdge = 1.0 / 30;

constexpr double kWidest = 0.92;  // of the window's width
constexpr double kGroundAlpha = 200;

wxFont FontOf(double height) {
  wxFont font = wxSystemSettings::GetFont(wxSYS_DEFAULT_GUI_FONT);
  font.SetPixelSize(wxSize(0, std::max(6, wxRound(height))));
  return font;
}

// Puts lines under each other, from (0, 0) on.
class Stack {
 public:
  Stack(const wxWindow& window, double unit) : window_(window), unit_(unit) {}

  void Add(const std::string& text, double height) {
    if (text.empty()) return;
    OverlayLayout::Line line{WxText(text), FontOf(height * unit_), wxPoint(0, size_.y)};
    int width = 0;
    int tall = 0;
    window_.GetTextExtent(line.text, &width, &tall, nullptr, nullptr, &line.font);
    size_ = wxSize(std::max(size_.x, width), size_.y + tall);
    lines_.push_back(std::move(line));
  }

  const wxSize& Size() const { return size_; }
  std::vector<OverlayLayout::Line> Lines() && { return std::move(lines_); }

 private:
  const wxWindow& window_;
  double unit_;
  wxSize size_;
  std::vector<OverlayLayout::Line> lines_;
};

Stack StackOf(const wxWindow& window, const PictureOverlay& overlay, double unit) {
  Stack stack(window, unit);
  stack.Add(overlay.heading, kHeading);
  stack.Add(overlay.line, kLine);
  for (const std::string& note : overlay.notes) stack.Add(note, kNote);
  return stack;
}

wxPoint CornerOf(OverlayPlace place, const wxSize& own, const wxSize& size, int edge) {
  const bool left = place == OverlayPlace::kTopLeft || place == OverlayPlace::kBottomLeft;
  const bool top = place == OverlayPlace::kTopLeft || place == OverlayPlace::kTopRight;
  if (place == OverlayPlace::kMiddle) return {(size.x - own.x) / 2, (size.y - own.y) / 2};
  return {left ? edge : size.x - own.x - edge, top ? edge : size.y - own.y - edge};
}

}  // namespace

OverlayLayout LayOverlay(const wxWindow& window, const PictureOverlay& overlay, OverlayPlace place,
                         const wxSize& size) {
  const int edge = wxRound(kEdge * size.y);
  const double room = kWidest * size.x - 2 * edge;
  const int wanted = StackOf(window, overlay, size.y).Size().x;
  Stack stack = StackOf(window, overlay, size.y * std::min(1.0, room / std::max(1, wanted)));
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
    context.DrawText(line.text, line.at.x, line.at.y);
  }
}

}  // namespace warpline
