#include "app/preview_svg.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <initializer_list>
#include <string_view>
#include <utility>

#include "core/conversions.h"

namespace warpline {
namespace {

constexpr double kMargin = 10;  // model units around everything drawn

std::string Number(double value) {
  const double rounded = std::nearbyint(value * 1000) / 1000;
  return ShortestText(rounded == 0 ? 0.0 : rounded);  // never "-0"
}

std::string Attribute(std::string_view name, const std::string& value) {
  std::string text(" ");
  text.append(name).append("=\"").append(value).append("\"");
  return text;
}

std::string Painted(std::string_view name, PreviewColour colour) {
  const std::array<std::uint8_t, 3> parts{colour.red, colour.green, colour.blue};
  return Attribute(name, std::string("#").append(InLowerCase(HexOf(parts))));
}

// The opening of a shape's element, without its end.
struct ElementOf {
  std::string operator()(const PreviewPolyline& line) const {
    std::string points;
    for (const PreviewPoint& point : line.points) {
      if (!points.empty()) points.push_back(' ');
      points.append(Number(point.x)).append(",").append(Number(point.y));
    }
    return Element("polyline", line.colour, {}).append(Attribute("points", points));
  }
  std::string operator()(const PreviewLine& line) const {
    return Element(
        "line", line.colour,
        {{"x1", line.from.x}, {"y1", line.from.y}, {"x2", line.to.x}, {"y2", line.to.y}});
  }
  std::string operator()(const PreviewBox& box) const {
    return Element("rect", box.colour, {}).append(Place(box));
  }
  std::string operator()(const PreviewEllipse& ellipse) const {
    return Element("ellipse", ellipse.colour,
                   {{"cx", ellipse.centre.x},
                    {"cy", ellipse.centre.y},
                    {"rx", ellipse.radius_x},
                    {"ry", ellipse.radius_y}});
  }
  std::string operator()(const PreviewArea& area) const {
    std::string text("<rect");
    text.append(Painted("fill", area.colour));
    text.append(Attribute("fill-opacity", Number(kPreviewAreaAlpha / 255.0)));
    text.append(Attribute("stroke", "none"));
    return text.append(Place(area));
  }

 private:
  struct NamedNumber {
    std::string_view name;
    double value;
  };

  static std::string Element(std::string_view name, PreviewColour colour,
                             std::initializer_list<NamedNumber> numbers) {
    std::string text("<");
    text.append(name).append(Painted("stroke", colour));
    return text.append(Numbers(numbers));
  }

  static std::string Numbers(std::initializer_list<NamedNumber> numbers) {
    std::string text;
    for (const NamedNumber& row : numbers) text.append(Attribute(row.name, Number(row.value)));
    return text;
  }

  template <typename Box>
  static std::string Place(const Box& box) {
    return Numbers(
        {{"x", box.corner.x}, {"y", box.corner.y}, {"width", box.width}, {"height", box.height}});
  }
};

struct ViewBox {
  PreviewPoint low{0, 0};
  PreviewPoint high{kPreviewWidth, kPreviewHeight};

  void Include(PreviewPoint point) {
    low = {std::min(low.x, point.x), std::min(low.y, point.y)};
    high = {std::max(high.x, point.x), std::max(high.y, point.y)};
  }
  void operator()(const PreviewPolyline& line) {
    for (const PreviewPoint& point : line.points) Include(point);
  }
  void operator()(const PreviewLine& line) {
    Include(line.from);
    Include(line.to);
  }
  template <typename Box>
  void operator()(const Box& box) {
    Include(box.corner);
    Include({box.corner.x + box.width, box.corner.y + box.height});
  }
  void operator()(const PreviewEllipse& ellipse) {
    Include({ellipse.centre.x - ellipse.radius_x, ellipse.centre.y - ellipse.radius_y});
    Include({ellipse.centre.x + ellipse.radius_x, ellipse.centre.y + ellipse.radius_y});
  }
};

ViewBox ViewOf(const PreviewDrawing& drawing) {
  ViewBox view;
  for (const PreviewShape& shape : drawing) std::visit([&view](const auto& s) { view(s); }, shape);
  view.Include({view.low.x - kMargin, view.low.y - kMargin});
  view.Include({view.high.x + kMargin, view.high.y + kMargin});
  return view;
}

}  // namespace

std::string PreviewSvg(const PreviewDrawing& drawing) {
  const ViewBox view = ViewOf(drawing);
  const std::string width = Number(view.high.x - view.low.x);
  const std::string height = Number(view.high.y - view.low.y);
  std::string corner = Attribute("x", Number(view.low.x));
  corner.append(Attribute("y", Number(view.low.y)));
  std::string size = Attribute("width", width);
  size.append(Attribute("height", height));
  std::string box = Number(view.low.x);
  box.append(" ").append(Number(view.low.y));
  box.append(" ").append(width).append(" ").append(height);

  std::string svg("<svg xmlns=\"http://www.w3.org/2000/svg\"");
  svg.append(size).append(Attribute("viewBox", box)).append(">\n");
  svg.append("<rect fill=\"#000000\"").append(corner).append(size).append("/>\n");
  svg.append("<g fill=\"none\" stroke-width=\"2\" stroke-linejoin=\"round\">\n");
  for (const PreviewShape& shape : drawing) {
    svg.append(std::visit(ElementOf{}, shape)).append("/>\n");
  }
  return svg.append("</g>\n</svg>\n");
}

}  // namespace warpline
