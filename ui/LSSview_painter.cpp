#include "ui/LSSview_painter.h"

#include <wx/brush.h>
#include <wx/graphics.h>

#include <variant>
#include <vector>

namespace warpline {
namespace {

constexpr double kLineWidth = 1.5;

// Paints one shape after the other; model units become the context's units.
class ShapePainter {
 public:
  ShapePainter(wxGraphicsContext& context, const PreviewPlacement& placement)
      : context_(context), placement_(placement) {
    context_.SetBrush(*wxTRANSPARENT_BRUSH);
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
    const wxPoint2DDouble corner = At(shape.corner);
    context_.DrawRectangle(corner.m_x, corner.m_y, shape.width * placement_.scale,
                           shape.height * placement_.scale);
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
  wxPoint2DDouble At(const PreviewPoint& point) const {
    return {placement_.offset_x + placement_.scale * point.x,
            placement_.offset_y + placement_.scale * point.y};
  }

  void SetColour(const PreviewColour& colour) {
    const wxColour wanted(colour.red, colour.green, colour.blue);
    context_.SetPen(context_.CreatePen(wxGraphicsPenInfo(wanted).Width(kLineWidth)));
  }

  wxGraphicsContext& context_;
  const PreviewPlacement& placement_;
  std::vector<wxPoint2DDouble> points_;
};

}  // namespace

void PaintPreview(wxGraphicsContext& context, const PreviewDrawing& drawing, double width,
                  double height) {
  const PreviewPlacement placement = PlacePreview(width, height);
  ShapePainter painter(context, placement);
  for (const PreviewShape& shape : drawing) std::visit(painter, shape);
}

}  // namespace warpline
