#include "ui/LSSwedit_painter.h"

#include <wx/brush.h>
#include <wx/graphics.h>
#include <wx/settings.h>

#include <algorithm>
#include <vector>

#include "ui/wx_text.h"

namespace warpline {
namespace {

// All in DIP. The top leaves room for the name of its axis, for points at Y = 1.0 and for a curve
// that swings beyond them.
constexpr double kEdge = 8;  // between figures or words and the edge of the client area
constexpr double kLeastRight = 28;
constexpr double kGridWidth = 1;
constexpr double kCurveWidth = 2;
constexpr double kHandleRadius = 5;
constexpr double kGrabbedRadius = 7;
constexpr double kRingGap = 4;         // between a point and the ring that tells it can be grabbed
constexpr double kFarOutside = 10000;  // DIP; no context draws what lies at any distance
constexpr double kLabelGap = 9;        // a point at the edge keeps clear of the figures

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
    context_.DrawRectangle(corner.x, corner.y, placement_.scale_x * kGraphUnits,
                           placement_.scale_y * (kGraphBottom - kGraphTop));
    PaintAxisNames();
    PaintWords();
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
    const GraphPlace foot = placement_.ToPixels({kGraphUnits / 2.0, kGraphBottom});
    const GraphPlace top = placement_.ToPixels({0, kGraphTop});
    const wxSize size = Extent("Y");
    context_.DrawText("X", foot.x - size.x / 2.0, SecondLine());
    context_.DrawText("Y", top.x - size.x / 2.0, top.y - kLabelGap * look_.dip - size.y);
  }

  // Under the figures of X.
  double SecondLine() const {
    return placement_.ToPixels({0, kGraphBottom}).y + kLabelGap * look_.dip +
           Extent(kWidestFigure).y;
  }

  // Those at the ends of X begin and end with the grid.
  void PaintWords() {
    const WaveWords& words = look_.words;
    const double gap = kLabelGap * look_.dip;
    const GraphPlace top = placement_.ToPixels({kGraphUnits, kGraphTop});
    const GraphPlace foot = placement_.ToPixels({kGraphUnits, kGraphBottom});
    context_.SetFont(look_.font, Shade(0.85));
    context_.DrawText(words.first, placement_.ToPixels({0, 0}).x, SecondLine());
    context_.DrawText(words.last, foot.x - Extent(words.last).x, SecondLine());
    context_.DrawText(words.top, top.x + gap, top.y - Extent(words.top).y / 2.0);
    context_.DrawText(words.foot, foot.x + gap, foot.y - Extent(words.foot).y / 2.0);
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
      const double far = kFarOutside * look_.dip;
      line.emplace_back(pixel.x, std::clamp(pixel.y, -far, far));
    }
    if (line.size() < 2) return;
    SetPen(kCurveColour, kCurveWidth);
    ClipToCurve();
    context_.StrokeLines(line.size(), line.data());
    context_.ResetClip();
  }

  // The curve may swing above the grid, but not down to the figures.
  void ClipToCurve() {
    const double room = kLabelGap / 2 * look_.dip;
    const GraphPlace foot = placement_.ToPixels({0, kGraphBottom});
    context_.Clip(foot.x - room, 0, placement_.scale_x * kGraphUnits + 2 * room, foot.y + room);
  }

  void PaintPoints() {
    const std::vector<GraphPosition> positions = editor_.GraphPositions();
    const int selected = editor_.SelectedPoint().value_or(-1);
    for (int i = 0; i < static_cast<int>(positions.size()); ++i) {
      if (i != selected) {
        PaintHandle(positions[static_cast<std::size_t>(i)], kHandleRadius, Shade(0), kCurveColour);
      }
    }
    if (selected >= 0) {
      PaintHandle(positions[static_cast<std::size_t>(selected)], kGrabbedRadius, kGrabbedColour,
                  Shade(0));
    }
    if (!look_.pointer) return;
    const auto under = editor_.PointUnder(look_.pointer->x, look_.pointer->y);
    if (under) PaintRing(positions[static_cast<std::size_t>(*under)], under == selected);
  }

  void PaintRing(const GraphPosition& position, bool selected) {
    PaintHandle(position, (selected ? kGrabbedRadius : kHandleRadius) + kRingGap,
                wxTransparentColour, selected ? kGrabbedColour : kCurveColour);
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

GraphMargins WaveMargins(double dip, double figure_width, double word_width, double line_height) {
  const double beside = (kLabelGap + kEdge) * dip;
  return {.left = figure_width + beside,
          .top = line_height + kLabelGap * dip,
          .right = std::max(word_width + beside, kLeastRight * dip),
          .bottom = 2 * line_height + beside};
}

GraphPlacement PlaceWave(const WaveLook& look) {
  return PlaceGraph(look.width, look.height, look.margins);
}

void PaintWave(wxGraphicsContext& context, const CurveEditor& editor, const WaveLook& look) {
  WavePainter(context, editor, look).Paint();
}

}  // namespace warpline
