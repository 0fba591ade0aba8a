#include "app/curve_graph.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <system_error>

#include "core/fault.h"

namespace warpline {
namespace {

constexpr int kGraphOrigin = 525;  // where Y = 0 would lie
constexpr int kUprightLines = 11;
constexpr int kUprightStep = 50;  // 0.1 of X
constexpr int kLevelLines = 6;
constexpr int kLevelStep = 25;  // 0.05 of Y
constexpr double kSmallestScale = 0.1;
constexpr double kFarOutside = 100000;

}  // namespace

GraphPosition GraphPositionOf(const CurvePoint& point) {
  return {RoundTo<int>(point.X * kGraphUnits), kGraphOrigin - RoundTo<int>(point.Y * kGraphUnits)};
}

double GraphX(int units) {
  return static_cast<double>(units) / kGraphUnits;
}

double GraphY(int units) {
  return static_cast<double>(kGraphOrigin - units) / kGraphUnits;
}

std::vector<GraphPlace> CurveLine(const std::vector<double>& samples) {
  std::vector<GraphPlace> line;
  line.reserve(samples.size());
  const double last = static_cast<double>(samples.size()) - 1;
  for (const double y : samples) {
    const double x = static_cast<double>(line.size()) * kGraphUnits / last;
    line.push_back({x, kGraphOrigin - y * kGraphUnits});
  }
  return line;
}

std::vector<GridLine> GridLines() {
  std::vector<GridLine> lines;
  for (int i = 0; i < kUprightLines; ++i) {
    const int x = i * kUprightStep;
    lines.push_back(
        {{double(x), kGraphTop}, {double(x), kGraphBottom}, CoordinateText(GraphX(x), 1)});
  }
  for (int i = 0; i < kLevelLines; ++i) {
    const int y = kGraphTop + i * kLevelStep;
    lines.push_back({{0, double(y)}, {kGraphUnits, double(y)}, CoordinateText(GraphY(y), 2)});
  }
  return lines;
}

std::string CoordinateText(double value, int decimals) {
  std::array<char, 400> buffer{};  // room for every double
  const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                    std::chars_format::fixed, decimals);
  return {buffer.data(), result.ptr};
}

std::optional<double> CoordinateOf(std::string figures) {
  std::replace(figures.begin(), figures.end(), ',', '.');
  const std::size_t first = figures.find_first_not_of(' ');
  if (first == std::string::npos) return std::nullopt;
  const char* end = figures.data() + figures.find_last_not_of(' ') + 1;
  double value = 0;
  const auto result = std::from_chars(figures.data() + first, end, value, std::chars_format::fixed);
  if (result.ec != std::errc() || result.ptr != end || !std::isfinite(value)) return std::nullopt;
  return value;
}

GraphPlace GraphPlacement::ToPixels(GraphPlace units) const {
  return {offset_x + scale_x * units.x, offset_y + scale_y * units.y};
}

GraphPosition GraphPlacement::ToUnits(GraphPlace pixels) const {
  const auto nearest = [](double units) {
    return RoundTo<int>(std::clamp(units, -kFarOutside, kFarOutside));
  };
  return {nearest((pixels.x - offset_x) / scale_x), nearest((pixels.y - offset_y) / scale_y)};
}

GraphPlacement PlaceGraph(double client_width, double client_height, const GraphMargins& margins) {
  constexpr double kHeight = kGraphBottom - kGraphTop;
  const double width = client_width - margins.left - margins.right;
  const double height = client_height - margins.top - margins.bottom;
  const double scale_x = std::max(width / kGraphUnits, kSmallestScale);
  const double scale_y = std::max(height / kHeight, kSmallestScale);
  return {scale_x, scale_y, margins.left, margins.top - scale_y * kGraphTop};
}

}  // namespace warpline
