#include "ui/LSSphoto_painter.h"

#include <wx/brush.h>
#include <wx/graphics.h>
#include <wx/image.h>
#include <wx/settings.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace warpline {
namespace {

// All in DIP.
constexpr double kMarkRadius = 4;
constexpr double kCornerRadius = 7;
constexpr double kRingRadius = 10;
constexpr double kLine = 1.5;
constexpr double kHalo = 3.5;
constexpr int kLoupeSide = 176;
constexpr double kLoupeGap = 8;
constexpr int kLoupeZoom = 8;  // DIP a pixel of the photograph

// They stand out on marks, their dark ground and the room, whose light has no colour.
const wxColour kMarkColour(0xF0, 0x30, 0xC0);
const wxColour kCornerColour(0x30, 0x90, 0xFF);
const wxColour kLensColour(0x20, 0xD0, 0xD0);
const wxColour kNowColour(0xFF, 0x90, 0x20);
const wxColour kForetoldColour(0x30, 0xD0, 0x40);
const wxColour kRingColour(0xFF, 0xE0, 0x30);
const wxColour kHaloColour(0, 0, 0, 150);
const wxColour kGroundColour(0x20, 0x20, 0x20);
const wxColour kHintColour(0xE0, 0xE0, 0xE0);

// What lies around a place, pixel by pixel; black beyond the photograph.
wxImage Enlarged(const RgbImage& photo, PlanePoint at, int side, double zoom) {
  wxImage image(side, side);
  unsigned char* pixel = image.GetData();
  for (int row = 0; row < side; ++row) {
    const int y = static_cast<int>(std::floor(at.Y + (row + 0.5 - side / 2.0) / zoom));
    for (int column = 0; column < side; ++column, pixel += 3) {
      const int x = static_cast<int>(std::floor(at.X + (column + 0.5 - side / 2.0) / zoom));
      const bool inside = x >= 0 && y >= 0 && x < photo.Width && y < photo.Height;
      if (inside) {
        std::copy_n(photo.At(x, y), 3, pixel);
      } else {
        std::fill_n(pixel, 3, 0);
      }
    }
  }
  return image;
}

class PhotoPainter {
 public:
  PhotoPainter(wxGraphicsContext& context, const PhotoSession& session, const PhotoLook& look)
      : context_(context),
        session_(session),
        look_(look),
        place_(PlacePhoto(session.Size(), look.size)) {}

  void Paint() {
    context_.SetPen(*wxTRANSPARENT_PEN);
    context_.SetBrush(wxBrush(kGroundColour));
    context_.DrawRectangle(0, 0, look_.size.x, look_.size.y);
    if (!look_.photo.IsOk()) return PaintHint();
    const PhotoSize photo = session_.Size();
    context_.DrawBitmap(look_.photo, place_.left, place_.top, photo.Width * place_.scale,
                        photo.Height * place_.scale);
    PaintFrame();
    PaintEdges();
    for (const PlaneLine& line : session_.Layout().Lines) Stroke(line, kLensColour);
    PaintHandles();
    if (look_.loupe) PaintLoupe();
    if (look_.focused) PaintFocus();
  }

 private:
  void SetPen(const wxColour& colour, double width) {
    context_.SetPen(context_.CreatePen(wxGraphicsPenInfo(colour).Width(width * look_.dip)));
  }

  void PaintHint() {
    context_.SetFont(wxSystemSettings::GetFont(wxSYS_DEFAULT_GUI_FONT), kHintColour);
    double width = 0;
    double height = 0;
    context_.GetTextExtent(look_.hint, &width, &height);
    context_.DrawText(look_.hint, (look_.size.x - width) / 2, (look_.size.y - height) / 2);
    if (look_.focused) PaintFocus();
  }

  void PaintFocus() {
    SetPen(kCornerColour, 2);
    context_.SetBrush(*wxTRANSPARENT_BRUSH);
    context_.DrawRectangle(look_.dip, look_.dip, look_.size.x - 2 * look_.dip,
                           look_.size.y - 2 * look_.dip);
  }

  // Over a dark one that is wider, so that it shows on every ground.
  void Stroke(const PlaneLine& line, const wxColour& colour) {
    std::vector<wxPoint2DDouble> points;
    for (const PlanePoint& point : line) points.push_back(place_.ToArea(point));
    if (points.size() < 2) return;
    for (const bool halo : {true, false}) {
      SetPen(halo ? kHaloColour : colour, halo ? kHalo : kLine);
      context_.StrokeLines(points.size(), points.data());
    }
  }

  void PaintEdges() {
    if (!session_.Report()) return;
    for (const PlaneLine& edge : session_.Report()->EdgesBefore) Stroke(edge, kNowColour);
    for (const PlaneLine& edge : session_.Chosen()->Edges) Stroke(edge, kForetoldColour);
  }

  void PaintFrame() {
    PlaneLine frame;
    for (const PlacedHandle& each : session_.Handles()) {
      if (each.Handle.Kind == PhotoHandleKind::kCorner) frame.push_back(each.At);
    }
    if (frame.empty()) return;
    frame.push_back(frame.front());
    Stroke(frame, kCornerColour);
  }

  void PaintHandles() {
    for (const PlacedHandle& each : session_.Handles()) PaintHandle(each);
    const std::optional<PlacedHandle> selected = session_.Selected();
    if (!selected) return;
    context_.SetBrush(*wxTRANSPARENT_BRUSH);
    for (const bool halo : {true, false}) {
      SetPen(halo ? kHaloColour : kRingColour, halo ? kHalo : kLine);
      Circle(selected->At, kRingRadius);
    }
  }

  void PaintHandle(const PlacedHandle& each) {
    const bool corner = each.Handle.Kind == PhotoHandleKind::kCorner;
    const wxColour& colour = corner                                       ? kCornerColour
                             : each.Handle.Kind == PhotoHandleKind::kMark ? kMarkColour
                                                                          : kLensColour;
    const double radius = corner ? kCornerRadius : kMarkRadius;
    const bool hollow = each.State == MarkState::kExpected || corner;
    context_.SetBrush(*wxTRANSPARENT_BRUSH);
    SetPen(kHaloColour, kHalo);
    corner ? Square(each.At, radius) : Circle(each.At, radius);
    context_.SetBrush(hollow ? *wxTRANSPARENT_BRUSH : wxBrush(colour));
    SetPen(colour, kLine);
    corner ? Square(each.At, radius) : Circle(each.At, radius);
  }

  void Circle(PlanePoint at, double radius) {
    const wxPoint2DDouble middle = place_.ToArea(at);
    const double reach = radius * look_.dip;
    context_.DrawEllipse(middle.m_x - reach, middle.m_y - reach, 2 * reach, 2 * reach);
  }

  void Square(PlanePoint at, double radius) {
    const wxPoint2DDouble middle = place_.ToArea(at);
    const double reach = radius * look_.dip;
    context_.DrawRectangle(middle.m_x - reach, middle.m_y - reach, 2 * reach, 2 * reach);
  }

  // In the upper corner that the handle is farther from.
  void PaintLoupe() {
    const std::optional<PlacedHandle> selected = session_.Selected();
    if (!selected) return;
    const int side = static_cast<int>(kLoupeSide * look_.dip);
    const double gap = kLoupeGap * look_.dip;
    const bool at_right = place_.ToArea(selected->At).m_x < look_.size.x / 2.0;
    const double left = at_right ? look_.size.x - gap - side : gap;
    const wxBitmap enlarged(Enlarged(session_.Photo(), selected->At, side, kLoupeZoom * look_.dip));
    context_.DrawBitmap(enlarged, left, gap, side, side);
    context_.SetBrush(*wxTRANSPARENT_BRUSH);
    SetPen(kRingColour, kLine);
    context_.DrawRectangle(left, gap, side, side);
    SetPen(kRingColour, 1);
    const double arm = side / 2.0;
    const double free = 2.0 * kLoupeZoom * look_.dip;  // around the place, which is to be seen
    for (const double way : {-1.0, 1.0}) {
      context_.StrokeLine(left + arm + way * free, gap + arm, left + arm + way * arm, gap + arm);
      context_.StrokeLine(left + arm, gap + arm + way * free, left + arm, gap + arm + way * arm);
    }
    context_.DrawEllipse(left + arm - look_.dip, gap + arm - look_.dip, 2 * look_.dip,
                         2 * look_.dip);
  }

  wxGraphicsContext& context_;
  const PhotoSession& session_;
  const PhotoLook& look_;
  PhotoPlacement place_;
};

}  // namespace

PhotoPlacement PlacePhoto(PhotoSize photo, const wxSize& area) {
  if (photo.Width <= 0 || photo.Height <= 0) return {};
  const double scale = std::min(static_cast<double>(area.x) / photo.Width,
                                static_cast<double>(area.y) / photo.Height);
  return {scale, (area.x - scale * photo.Width) / 2, (area.y - scale * photo.Height) / 2};
}

void PaintPhoto(wxGraphicsContext& context, const PhotoSession& session, const PhotoLook& look) {
  PhotoPainter(context, session, look).Paint();
}

}  // namespace warpline
