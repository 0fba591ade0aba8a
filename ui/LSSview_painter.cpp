#include "ui/LSSview_painter.h"

#include <wx/brush.h>
#include <wx/graphics.h>

#include <array>
#include <cmath>
#include <variant>
#include <vector>

namespace warpline {
namespace {

struct PenRow {
  PreviewColour colour;
  double width;  // DIP
};

// Bands that lie on the frame still show beside it, on both sides of the area's edge.
constexpr std::array<PenRow, 5> kPens{{{kPreviewYellow, 6},
                                       {kPreviewBlue, 3},
                                       {kPreviewCyan, 1},
                                       {kPreviewGreen, 1.5},
                                       {kPreviewWhite, 1.5}}};

double PenWidth(const PreviewColour& colour) {
  for (const PenRow& row : kPens) {
    if (row.colour == colour) return row.width;
  }
  return 1;
}

// Paints one shape after the other; model units become the context's units.
class ShapePainter {
 public:
  ShapePainter(wxGraphicsContext& context, wxPoint2DDouble area, double dip)
      : context_(context), area_(area), placement_(PlacePreview(area.m_x, area.m_y)), dip_(dip) {
    context_.SetBrush(*wxTRANSPARENT_BRUSH);
    context_.EnableOffset(false);  // lines stay where the drawing has them
  }

  void operator()(const PreviewPolyline& shape) {
    SetColour(shape.colour);
    points_.clear();
    for (const PreviewPoint& point : shape.points) points_.push_back(At(point));
    if (points_.size() > 1) context_.StrokeLines(points_.size(), points_.data());
  }

  void operator()(const PreviewLine& shape) {
    SetColour(shape.colour);
    const wxPoint2DDouble from = At(shape.from);
    const wxPoint2DDouble to = At(shape.to);
    context_.StrokeLine(from.m_x, from.m_y, to.m_x, to.m_y);
  }

  void operator()(const PreviewBox& shape) {
    SetColour(shape.colour);
    const double half = PenWidth(shape.colour) * dip_ / 2;
    const wxPoint2DDouble low = At(shape.corner);
    const wxPoint2DDouble high = At({shape.corner.x + shape.width, shape.corner.y + shape.height});
    const double left = HeldOffEdge(low.m_x, area_.m_x, half);
    const double top = HeldOffEdge(low.m_y, area_.m_y, half);
    context_.DrawRectangle(left, top, HeldOffEdge(high.m_x, area_.m_x, half) - left,
                           HeldOffEdge(high.m_y, area_.m_y, half) - top);
  }

  void operator()(const PreviewEllipse& shape) {
    SetColour(shape.colour);
    const wxPoint2DDouble corner =
        At({shape.centre.x - shape.radius_x, shape.centre.y - shape.radius_y});
    context_.DrawEllipse(corner.m_x, corner.m_y, 2 * shape.radius_x * placement_.scale,
                         2 * shape.radius_y * placement_.scale);
  }

  void operator()(const PreviewArea& shape) {
    const PreviewColour& colour = shape.colour;
    context_.SetPen(*wxTRANSPARENT_PEN);
    context_.SetBrush(wxBrush(wxColour(colour.red, colour.green, colour.blue, kPreviewAreaAlpha)));
    const wxPoint2DDouble corner = At(shape.corner);
    context_.DrawRectangle(corner.m_x, corner.m_y, shape.width * placement_.scale,
                           shape.height * placement_.scale);
    context_.SetBrush(*wxTRANSPARENT_BRUSH);
  }

 private:
  // A side that lies on the edge of an area from 0 to end, moved inwards until its whole line
  // shows.
  static double HeldOffEdge(double side, double end, double half) {
    if (std::abs(side) < half) return half;
    return std::abs(side - end) < half ? end - half : side;
  }

  wxPoint2DDouble At(const PreviewPoint& point) const {
    return {placement_.offset_x + placement_.scale * point.x,
            placement_.offset_y + placement_.scale * point.y};
  }

  void SetColour(const PreviewColour& colour) {
    const wxColour wanted(colour.red, colour.green, colour.blue);
    const double width = PenWidth(colour) * dip_;
    context_.SetPen(context_.CreatePen(wxGraphicsPenInfo(wanted).Width(width)));
  }

  wxGraphicsContext& context_;
  wxPoint2DDouble area_;
  PreviewPlacement placement_;
  double dip_;
  std::vector<wxPoint2DDouble> points_;
};

}  // namespace

void PaintPreview(wxGraphicsContext& context, const PreviewDrawing& drawing, double width,
                  double height, double dip) {
  ShapePainter painter(context, {width, height}, dip);
  for (const PreviewShape& shape : drawing) std::visit(painter, shape);
}

}  // namespace warpline
