#include "app/sheet_pictures.h"

#include <array>
#include <cmath>
#include <cstddef>

#include "app/curve_graph.h"
#include "app/html.h"
#include "core/conversions.h"
#include "core/table_order.h"
#include "model/profile.h"

namespace warpline {
namespace embedded {

std::string_view Embedded_screen_cylinder();
std::string_view Embedded_screen_vertical_bow();
std::string_view Embedded_screen_sphere();
std::string_view Embedded_screen_corner();
std::string_view Embedded_screen_corner_ceiling();
std::string_view Embedded_screen_other();

}  // namespace embedded

namespace {

struct ScreenRow {
  ScreenType type;
  std::string_view (*picture)();
};
constexpr std::array kScreenPictures{
    ScreenRow{kCylindricalScreen, embedded::Embedded_screen_cylinder},
    ScreenRow{kVerticalBowScreen, embedded::Embedded_screen_vertical_bow},
    ScreenRow{kSphericalScreen, embedded::Embedded_screen_sphere},
    ScreenRow{kCornerWallScreen, embedded::Embedded_screen_corner},
    ScreenRow{kCornerCeilingScreen, embedded::Embedded_screen_corner_ceiling},
    ScreenRow{kOtherScreens, embedded::Embedded_screen_other},
};
static_assert(RowsStandInOrder(kScreenPictures, &ScreenRow::type));
static_assert(kScreenPictures.size() == kScreenTypes.size());

constexpr int kSamples = 251;  // one each two units of the graph
constexpr int kLeft = 34;      // room for the figures, in graph units
constexpr int kFoot = 24;
constexpr int kEdge = 8;  // for points at the other edges

std::string Figure(double value) {
  return ShortestText(std::nearbyint(value * 100) / 100);
}

std::string Place(std::string_view x_name, double x, std::string_view y_name, double y) {
  std::string text(" ");
  text.append(x_name).append("=\"").append(Figure(x)).append("\" ");
  return text.append(y_name).append("=\"").append(Figure(y)).append("\"");
}

std::string GridPicture() {
  std::string picture;
  for (const GridLine& line : GridLines()) {
    picture += Element("line" + Place("x1", line.from.x, "y1", line.from.y) +
                           Place("x2", line.to.x, "y2", line.to.y) + " stroke=\"#bbb\"",
                       "");
    const bool upright = line.from.x == line.to.x;
    const std::string place =
        upright ? Place("x", line.from.x, "y", kGraphBottom + 19) + " text-anchor=\"middle\""
                : Place("x", -5, "y", line.from.y + 4) + " text-anchor=\"end\"";
    picture += TextElement("text" + place, line.label);
  }
  return picture;
}

std::string LinePicture(const CurveDefinition& curve) {
  std::string points;
  for (const GraphPlace& place : CurveLine(SampleCurve(curve, kSamples))) {
    if (!points.empty()) points += ' ';
    points.append(Figure(place.x)).append(",").append(Figure(place.y));
  }
  return Element(
      "polyline fill=\"none\" stroke=\"#000\" stroke-width=\"2\" points=\"" + points + "\"", "");
}

std::string PointsPicture(const CurveDefinition& curve) {
  std::string picture;
  for (std::size_t i = 0; i < static_cast<std::size_t>(curve.CorrePointNum); ++i) {
    const GraphPosition position = GraphPositionOf(curve.CorreDataPts.at(i));
    picture += Element("circle r=\"5\" fill=\"#fff\" stroke=\"#000\" stroke-width=\"1.5\"" +
                           Place("cx", position.x, "cy", position.y),
                       "");
  }
  return picture;
}

}  // namespace

std::string_view ScreenPicture(std::int16_t type) {
  return kScreenPictures.at(static_cast<std::size_t>(type)).picture();
}

std::string CurvePicture(const CurveDefinition& curve) {
  const int top = kGraphTop - kEdge;
  std::string box = std::to_string(-kLeft) + " " + std::to_string(top) + " ";
  box += std::to_string(kLeft + kGraphUnits + kEdge * 2) + " ";
  box += std::to_string(kGraphBottom + kFoot - top);
  return Element("svg viewBox=\"" + box + "\" font-size=\"12\"",
                 GridPicture() + LinePicture(curve) + PointsPicture(curve));
}

}  // namespace warpline
