#include "fit/residuals.h"

#include <algorithm>
#include <array>

namespace warpline {
namespace {

constexpr int kEdgeParts = 24;
constexpr int kInnerParts = 12;
constexpr double kInnerShare = 0.25;
constexpr double kOutsideShare = 2;
constexpr double kMargin = 0.002;  // of the panel, that stays free at its edges
constexpr double kSizeShare = 0.05;
constexpr double kLeaningShare = 0.05;
constexpr double kLackingShare = 10;
constexpr double kSharpInnerShare = 0.075;  // where the worst edge counts

struct Filler {
  const FitTask& task;
  const DrawnLines& lines;
  std::vector<double>& residuals;
  double unit;  // the height of the picture that is meant
  double worst;

  // Appends where the picture's line is seen, across it.
  std::span<double> AppendLine(const PictureLine& line, int parts) {
    const std::size_t begin = residuals.size();
    along.clear();
    for (int part = 0; part <= parts; ++part) {
      const PlanePoint picture = line.Point(static_cast<double>(part) / parts);
      const PlanePoint landing = LandingOf(lines, task.Panel, picture);
      if (line.Edge) {
        const double across = line.Across(landing);
        const double inside = std::min(across, 1 - across);
        const double beyond = std::max(0.0, kMargin - inside) / kMargin;
        outside.push_back(kOutsideShare * kMargin * beyond * beyond);
      }
      const PlanePoint seen = task.Seen.FrameOf(landing);
      residuals.push_back(line.Across(seen) / unit);
      along.push_back(line.Along(seen) / unit);
    }
    return std::span(residuals).subspan(begin);
  }

  bool Sharp() const { return worst > 0; }

  // Their squares are sixth powers then.
  void Sharpen(std::span<double> values) const {
    if (!Sharp()) return;
    for (double& value : values) value *= value / worst * value / worst;
  }

  // Returns where the edge is on the whole, in units.
  double AppendEdge(std::size_t i, double wanted) {
    const std::span<double> values = AppendLine(kPictureLines[i], kEdgeParts);
    if (task.Wanted) {
      for (double& value : values) value -= wanted / unit;
      Sharpen(values);
      return wanted / unit;
    }
    const NearestLine line = TakeNearestLine(values, along);
    Sharpen(values);
    leanings.push_back(Sharp() ? 0 : kLeaningShare * line.Rise);
    return line.Mean;
  }

  std::vector<double> along = {};  // of the line appended last
  std::vector<double> leanings = {};
  std::vector<double> outside = {};
};

std::array<double, kPictureEdges> ArrayOf(const Sides& sides) {
  return {sides.Left, sides.Top, sides.Right, sides.Bottom};
}

}  // namespace

void FillResiduals(const FitTask& task, const DrawnLines& lines, double worst,
                   std::vector<double>& residuals) {
  const Sides& meant = task.Wanted ? *task.Wanted : task.Largest;
  const auto sides = ArrayOf(meant);
  residuals.clear();
  Filler filler{task, lines, residuals, meant.Height(), worst};
  std::array<double, kPictureEdges> side{};
  for (std::size_t i = 0; i < kPictureEdges; ++i) side[i] = filler.AppendEdge(i, sides[i]);
  for (std::size_t i = kPictureEdges; i < std::size(kPictureLines); ++i) {
    const std::span<double> values = filler.AppendLine(kPictureLines[i], kInnerParts);
    TakeNearestLine(values, filler.along);
    for (double& value : values) value *= filler.Sharp() ? kSharpInnerShare : kInnerShare;
  }
  residuals.insert(residuals.end(), filler.outside.begin(), filler.outside.end());
  residuals.insert(residuals.end(), filler.leanings.begin(), filler.leanings.end());
  for (std::size_t i = 0; i < kPictureEdges; ++i) {
    const double off = side[i] - sides[i] / filler.unit;
    residuals.push_back(filler.Sharp() ? 0 : kSizeShare * off);
  }
  const double area = (side[2] - side[0]) * (side[3] - side[1]) * filler.unit * filler.unit;
  const double lacking = task.Wanted ? 0 : kLeastArea - area / task.Largest.Area();
  residuals.push_back(kLackingShare * std::max(0.0, lacking));
}

}  // namespace warpline
