#include "app/preview_geometry.h"

#include <algorithm>
#include <cmath>

#include "core/fault.h"
#include "model/profile.h"

namespace warpline {
namespace {

constexpr double kCentreX = kPreviewWidth / 2;
constexpr double kCentreY = kPreviewHeight / 2;
constexpr double kCircleRadius = kPreviewHeight / 2;
constexpr double kNarrowestArea = 4;
constexpr double kUnitsPerModelUnit = 15;  // the window's own unit
constexpr PanelSize kModelPanel{static_cast<int>(kPreviewWidth), static_cast<int>(kPreviewHeight)};

// A length as a whole number of the window's units.
double ToUnits(double length) {
  return RoundTo<std::int32_t>(length * kUnitsPerModelUnit);
}

double FromUnits(double units) {
  return units / kUnitsPerModelUnit;
}

double HalfLength(Axis axis) {
  return axis == kHorizontal ? kCentreX : kCentreY;
}

double PositionShiftUnits(const AxisParameters& parameters, Axis axis) {
  return ToUnits(static_cast<double>(parameters.Position) / 32768 * HalfLength(axis));
}

// What the two bands of an axis are drawn from.
struct Band {
  Axis axis = kHorizontal;
  std::int16_t projection = 0;
  double optical = 0;
  double shift = 0;             // window units
  std::vector<double> profile;  // one line size a model line
};

Band BandOf(const CorrectionData& correction, Axis axis) {
  const AxisCorrection part = CorrectionOf(correction, axis);
  const std::vector<double> samples = SampleCurve(part.Curve, LineCount(kModelPanel, axis));
  Band band;
  band.axis = axis;
  band.projection = part.Projection;
  band.optical = part.Parameters.Optical;
  band.shift = PositionShiftUnits(part.Parameters, axis);
  band.profile = PreviewProfile(part.Parameters, samples, LineLength(kModelPanel, axis));
  return band;
}

// One polyline along the axis's model lines: offset_of gives a line's distance from the centre, in
// model units. The point of the last line is not drawn.
template <typename OffsetOf>
PreviewShape AlongLines(const Band& band, OffsetOf offset_of) {
  PreviewPolyline line{kPreviewYellow, {}};
  line.points.reserve(band.profile.size());
  const double centre = ToUnits(HalfLength(band.axis));
  for (std::size_t j = 0; j < band.profile.size(); ++j) {
    const double along = static_cast<double>(j);
    const double across = FromUnits(centre + ToUnits(offset_of(band.profile[j])) - band.shift);
    line.points.push_back(band.axis == kHorizontal ? PreviewPoint{across, along}
                                                   : PreviewPoint{along, across});
  }
  line.points.pop_back();
  return line;
}

// The band that the correction bends by the profile itself.
PreviewShape BentEdge(const Band& band) {
  const double side = band.projection == 0 ? 1 : -1;
  return AlongLines(band, [side](double p) { return p / -2 * side; });
}

// How much of the bent edge's inset the edge across the picture shows, for the optical centre c.
double OppositeShare(double c) {
  return c == 1.0 ? 64 : c / (1 - c);
}

// The band on the other side of the picture (side 1: behind the centre, -1: before it).
PreviewShape OppositeEdge(const Band& band, double c, double side) {
  const double half = HalfLength(band.axis);
  const double share = OppositeShare(c);
  return AlongLines(band, [=](double p) {
    const double inset = (2 * half - p) / 2 * share;
    return (half - inset) * side;
  });
}

PreviewShape DrawBandH_R(const Band& band) {
  return BentEdge(band);
}

PreviewShape DrawBandV_U(const Band& band) {
  return BentEdge(band);
}

PreviewShape DrawBandH_L_Normal(const Band& band) {
  return OppositeEdge(band, (band.optical + 32) / 64, 1);
}

PreviewShape DrawBandH_L_Reverse(const Band& band) {
  return OppositeEdge(band, (32 - band.optical) / 64, -1);
}

PreviewShape DrawBandV_D_Normal(const Band& band) {
  return OppositeEdge(band, (band.optical + 32) / 64, 1);
}

PreviewShape DrawBandV_D_Reverse(const Band& band) {
  return OppositeEdge(band, (32 - band.optical) / 64, -1);
}

PreviewShape DrawBandH_L(const Band& band) {
  return band.projection == 0 ? DrawBandH_L_Normal(band) : DrawBandH_L_Reverse(band);
}

PreviewShape DrawBandV_D(const Band& band) {
  return band.projection == 0 ? DrawBandV_D_Normal(band) : DrawBandV_D_Reverse(band);
}

// The frame, and short ticks inwards from its corners and from the middle of its edges.
void DrawScope(PreviewDrawing& drawing) {
  constexpr double kTick = 20;
  drawing.push_back(PreviewBox{kPreviewCyan, {0, 0}, kPreviewWidth, kPreviewHeight});
  for (const double x : {0.0, kCentreX, kPreviewWidth}) {
    for (const double y : {0.0, kCentreY, kPreviewHeight}) {
      const double dx = x < kCentreX ? kTick : (x > kCentreX ? -kTick : 0);
      const double dy = y < kCentreY ? kTick : (y > kCentreY ? -kTick : 0);
      if (dx == 0 && dy == 0) continue;
      drawing.push_back(PreviewLine{kPreviewGreen, {x, y}, {x + dx, y + dy}});
    }
  }
}

void DrawCross(PreviewDrawing& drawing, PreviewColour colour, PreviewPoint centre) {
  drawing.push_back(PreviewLine{colour, {0, centre.y}, {kPreviewWidth, centre.y}});
  drawing.push_back(PreviewLine{colour, {centre.x, 0}, {centre.x, kPreviewHeight}});
}

PreviewDrawing DrawAspectCircle(const CorrectionData& correction, Axis axis) {
  const double a = 1 + static_cast<double>(correction.Axes[axis].Amplitude) / 256;
  PreviewEllipse circle{kPreviewBlue, {kCentreX, kCentreY}, kCircleRadius, kCircleRadius};
  (axis == kHorizontal ? circle.radius_x : circle.radius_y) = kCircleRadius * a;
  return {circle};
}

PreviewDrawing DrawPositionCircle(const CorrectionData& correction, Axis axis) {
  const double displacement = FromUnits(PositionShiftUnits(correction.Axes[axis], axis));
  PreviewPoint centre{kCentreX, kCentreY};
  (axis == kHorizontal ? centre.x : centre.y) -= displacement;
  PreviewDrawing drawing{PreviewEllipse{kPreviewBlue, centre, kCircleRadius, kCircleRadius}};
  DrawCross(drawing, kPreviewBlue, centre);
  return drawing;
}

PreviewDrawing DrawBands(const CorrectionData& correction) {
  const Band horizontal = BandOf(correction, kHorizontal);
  const Band vertical = BandOf(correction, kVertical);
  PreviewDrawing drawing{DrawBandH_R(horizontal), DrawBandH_L(horizontal), DrawBandV_U(vertical),
                         DrawBandV_D(vertical)};
  DrawScope(drawing);
  return drawing;
}

PreviewArea AreaOver(const LineRange& lines, int line_count, Axis axis) {
  const double extent = 2 * HalfLength(axis == kHorizontal ? kVertical : kHorizontal);
  const double first = lines.First * extent / line_count;
  const double last = (lines.Last + 1) * extent / line_count;
  const double size = std::max(last - first, kNarrowestArea);
  const double from = std::clamp((first + last - size) / 2, 0.0, extent - size);
  if (axis == kHorizontal) return {kPreviewRed, {0, from}, kPreviewWidth, size};
  return {kPreviewRed, {from, 0}, size, kPreviewHeight};
}

}  // namespace

PreviewDrawing Redraw(const CorrectionData& correction,
                      const std::array<AxisParameters, kAxisCount>& reference) {
  for (const Axis axis : {kHorizontal, kVertical}) {
    if (correction.Axes[axis].Amplitude != reference[axis].Amplitude) {
      return DrawAspectCircle(correction, axis);
    }
  }
  for (const Axis axis : {kHorizontal, kVertical}) {
    if (correction.Axes[axis].Position != reference[axis].Position) {
      return DrawPositionCircle(correction, axis);
    }
  }
  return DrawBands(correction);
}

PreviewDrawing DrawDeviation(const Deviation& deviation, PanelSize panel) {
  PreviewDrawing drawing;
  for (const Axis axis : {kHorizontal, kVertical}) {
    for (const LineRange& lines : deviation[axis].Ranges) {
      drawing.push_back(AreaOver(lines, LineCount(panel, axis), axis));
    }
  }
  return drawing;
}

PreviewDrawing Over(PreviewDrawing lower, const PreviewDrawing& upper) {
  lower.insert(lower.end(), upper.begin(), upper.end());
  return lower;
}

PreviewDrawing DrawAuxLine() {
  constexpr std::array<PanelSize, 3> kOutlined{{{800, 600}, {1024, 768}, {1280, 1024}}};
  PreviewDrawing drawing;
  DrawCross(drawing, kPreviewWhite, {kCentreX, kCentreY});
  for (const PanelSize size : kOutlined) {
    const double width = size.Width;
    const double height = size.Height;
    drawing.push_back(
        PreviewBox{kPreviewWhite, {kCentreX - width / 2, kCentreY - height / 2}, width, height});
    drawing.push_back(PreviewEllipse{kPreviewWhite, {kCentreX, kCentreY}, height / 2, height / 2});
  }
  return drawing;
}

PreviewPlacement PlacePreview(double client_width, double client_height) {
  PreviewPlacement placement;
  placement.scale =
      std::max(0.0, std::min(client_width / kPreviewWidth, client_height / kPreviewHeight));
  placement.offset_x = (client_width - kPreviewWidth * placement.scale) / 2;
  placement.offset_y = (client_height - kPreviewHeight * placement.scale) / 2;
  return placement;
}

}  // namespace warpline
