#include "ui/LSSwedit_painter.h"

#include <wx/brush.h>
#include <wx/graphics.h>
#include <wx/settings.h>

#include <vector>

#include "ui/wx_text.h"

namespace warpline {
namespace {

// All in DIP. The top leaves room for points at Y = 1.0 and for a curve that swings beyond them.
constexpr GraphMargins kMargins{48, 20, 28, 36};
constexpr double kGridWidth = 1;
constexpr double kCurveWidth = 2;
constexpr double kHandleRadius = 5;
constexpr double kGrabbedRadius = 7;
constexpr double kLabelGap = 9;  // a point at the edge keeps clear of the figures

const wxColour kCurveColour(0x1F, 0x6F, 0xC9);
const wxColour kGrabbedColour(0xE8, 0x6A, 0x10);

// A colour between the window's ground (0) and its text (1), so that the graph goes with the
// system's light and dark themes.
wxColour Shade(double strength) {
  const wxColour ground = wxSystemSettings::GetColour(wxSYS_COLOUR_WINDOW);
  const wxColour text = wxSystemSettings::GetColour(wxSYS_COLOUR_WINDOWTEXT);
  const auto between = [strength](unsigned char low, unsigned char high) {
    return wxColour::AlphaBlend(high, low, strength);
  };
  return {between(ground.Red(), text.Red()), between(ground.Green(), text.Green()),
          between(ground.Blue(), text.Blue())};
}

class WavePainter {
 public:
  WavePainter(wxGraphicsContext& context, const CurveEditor& editor, const WaveLook& look)
      : context_(context), editor_(editor), look_(look), placement_(PlaceWave(look)) {}

  void Paint() {
    SetPen(Shade(0), kGridWidth);
    context_.SetBrush(wxBrush(Shade(0)));
    context_.DrawRectangle(0, 0, look_.width, look_.height);
    PaintGrid();
    PaintCurve();
    PaintPoints();
  }

 private:
  void SetPen(const wxColour& colour, double width) {
    context_.SetPen(context_.CreatePen(wxGraphicsPenInfo(colour).Width(width * look_.dip)));
  }

  void PaintGrid() {
    SetPen(Shade(0.15), kGridWidth);
    context_.SetFont(look_.font, Shade(0.65));
    const std::vector<GridLine> lines = GridLines();
    for (const GridLine& line : lines) {
      const GraphPlace from = placement_.ToPixels(line.from);
      const GraphPlace to = placement_.ToPixels(line.to);
      context_.StrokeLine(from.x, from.y, to.x, to.y);
    }
    for (const GridLine& line : lines) PaintLabel(line);
    const GraphPlace corner = placement_.ToPixels({0, kGraphTop});
    SetPen(look_.focused ? kCurveColour : Shade(0.45), kGridWidth);
    context_.SetBrush(*wxTRANSPARENT_BRUSH);
    context_.DrawRectangle(corner.x, corner.y, placement_.scale * kGraphUnits,
                           placement_.scale * (kGraphBottom - kGraphTop));
    PaintAxisNames();
  }

  // At the foot of upright lines, at the left end of level ones.
  void PaintLabel(const GridLine& line) {
    const wxString text = WxText(line.label);
    const wxSize size = Extent(text);
    const double gap = kLabelGap * look_.dip;
    if (line.from.x == line.to.x) {
      const GraphPlace foot = placement_.ToPixels({line.from.x, kGraphBottom});
      context_.DrawText(text, foot.x - size.x / 2.0, foot.y + gap);
    } else {
      const GraphPlace end = placement_.ToPixels(line.from);
      context_.DrawText(text, end.x - gap - size.x, end.y - size.y / 2.0);
    }
  }

  void PaintAxisNames() {
    const double gap = kLabelGap * look_.dip;
    const GraphPlace foot = placement_.ToPixels({kGraphUnits, kGraphBottom});
    const GraphPlace top = placement_.ToPixels({0, kGraphTop});
    const wxSize size = Extent("X");
    context_.DrawText("X", foot.x + 1.4 * gap, foot.y - size.y / 2.0);
    context_.DrawText("Y", top.x - size.x / 2.0, top.y - gap - size.y);
  }

  wxSize Extent(const wxString& text) const {
    double width = 0;
    double height = 0;
    context_.GetTextExtent(text, &width, &height);
    return {wxRound(width), wxRound(height)};
  }

  void PaintCurve() {
    std::vector<wxPoint2DDouble> line;
    for (const GraphPlace& place : CurveLine(editor_.Sampled().samples)) {
      const GraphPlace pixel = placement_.ToPixels(place);
      line.emplace_back(pixel.x, pixel.y);
    }
    SetPen(kCurveColour, kCurveWidth);
    if (line.size() > 1) context_.StrokeLines(line.size(), line.data());
  }

  void PaintPoints() {
    const std::vector<GraphPosition> positions = editor_.GraphPositions();
    const int selected = editor_.SelectedPoint().value_or(-1);
    for (int i = 0; i < static_cast<int>(positions.size()); ++i) {
      if (i != selected) {
        PaintHandle(positions[static_cast<std::size_t>(i)], kHandleRadius, Shade(0), kCurveColour);
      }
    }
    if (selected < 0) return;
    PaintHandle(positions[static_cast<std::size_t>(selected)], kGrabbedRadius, kGrabbedColour,
                Shade(0));
  }

  void PaintHandle(const GraphPosition& position, double dip_radius, const wxColour& inside,
                   const wxColour& rim) {
    const double radius = dip_radius * look_.dip;
    const GraphPlace centre =
        placement_.ToPixels({static_cast<double>(position.x), static_cast<double>(position.y)});
    SetPen(rim, kCurveWidth);
    context_.SetBrush(wxBrush(inside));
    context_.DrawEllipse(centre.x - radius, centre.y - radius, 2 * radius, 2 * radius);
  }

  wxGraphicsContext& context_;
  const CurveEditor& editor_;
  const WaveLook& look_;
  GraphPlacement placement_;
};

}  // namespace

GraphPlacement PlaceWave(const WaveLook& look) {
  return PlaceGraph(look.width, look.height,
                    {kMargins.left * look.dip, kMargins.top * look.dip, kMargins.right * look.dip,
                     kMargins.bottom * look.dip});
}

void PaintWave(wxGraphicsContext& context, const CurveEditor& editor, const WaveLook& look) {
  WavePainter(context, editor, look).Paint();
}

}  // namespace warpline
