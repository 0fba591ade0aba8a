#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <random>
#include <vector>

#include "fit/lens.h"
#include "fit/marks.h"
#include "model/registers.h"
#include "picture/camera.h"
#include "picture/panel_lines.h"

// A wall with a picture on it, photographed by exact projection: what a fit is told, and what came
// of it. Nothing here goes through the fit's own model of panel and photograph.

namespace warpline {

struct WallScene {
  warpline::Wall Wall;
  PanelSize Panel;
  Camera Seen;

  // The height of the picture's middle, metres below the lens's axis.
  double Middle() const {
    const double part = Wall.Axis == LensAxis::kTop      ? 0.5
                        : Wall.Axis == LensAxis::kMiddle ? 0
                                                         : -0.5;
    return part * Height();
  }
  double Height() const { return Wall.Distance / kThrowRatio * Panel.Height / Panel.Width; }
};

// A grid of marks, the outermost 2 % inside the panel; each off by some pixels (standard deviation)
// either way.
inline Marks MarksOn(const WallScene& scene, int columns, int rows, double off = 0) {
  constexpr double kInside = 0.02;
  std::mt19937 random(1);
  std::normal_distribution<double> error(0, off > 0 ? off : 1);
  const auto view = CameraView::Of(scene.Wall, scene.Panel, scene.Seen);
  Marks marks;
  for (int row = 0; row < rows; ++row) {
    for (int column = 0; column < columns; ++column) {
      const double u = kInside + (1 - 2 * kInside) * column / (columns - 1);
      const double v = kInside + (1 - 2 * kInside) * row / (rows - 1);
      const auto at = view->PhotoPosition(u * scene.Panel.Width, v * scene.Panel.Height).value();
      marks.push_back(
          {u, v, at[0] + (off > 0 ? error(random) : 0), at[1] + (off > 0 ? error(random) : 0)});
    }
  }
  return marks;
}

// Three lines along the photograph's edges, straight in reality, as its lens shows them.
inline std::vector<PlaneLine> LinesThrough(const Camera& camera) {
  const PhotoSize photo{camera.Photo.Width, camera.Photo.Height};
  Lens lens = LensWithoutFault(photo);
  lens.K1 = camera.K1;
  constexpr std::array<std::array<PlanePoint, 2>, 3> kEnds{{{{{0.05, 0.06}, {0.95, 0.09}}},
                                                            {{{0.06, 0.05}, {0.04, 0.95}}},
                                                            {{{0.05, 0.93}, {0.95, 0.95}}}}};
  std::vector<PlaneLine> lines;
  for (const auto& [from, to] : kEnds) {
    lines.emplace_back();
    for (const double share : {0.0, 0.25, 0.5, 0.75, 1.0}) {
      lines.back().push_back(lens.Shown({photo.Width * (from.X + share * (to.X - from.X)),
                                         photo.Height * (from.Y + share * (to.Y - from.Y))}));
    }
  }
  return lines;
}

// What a line shows at a place across the lines, between the two nearest.
inline PanelLine LineAt(const std::vector<PanelLine>& lines, double place) {
  const double at = std::clamp(place - 0.5, 0.0, static_cast<double>(lines.size()) - 1.001);
  const auto i = static_cast<std::size_t>(at);
  const double share = at - static_cast<double>(i);
  return {lines[i].Offset + share * (lines[i + 1].Offset - lines[i].Offset),
          lines[i].Slope + share * (lines[i + 1].Slope - lines[i].Slope)};
}

// How far points are from the straight line nearest to them: half the narrowest strip that holds
// them, turned little by little from the chord.
inline double OffLine(const PlaneLine& points) {
  const double chord = std::atan2(points.back().Y - points[0].Y, points.back().X - points[0].X);
  double narrowest = 1e9;
  for (double turn = -0.03; turn <= 0.03; turn += 0.0001) {
    double low = 1e9;
    double high = -1e9;
    for (const PlanePoint& point : points) {
      const double beside = point.Y * std::cos(chord + turn) - point.X * std::sin(chord + turn);
      low = std::min(low, beside);
      high = std::max(high, beside);
    }
    narrowest = std::min(narrowest, high - low);
  }
  return narrowest / 2;
}

struct SeenPicture {
  double OffStraight = 0;  // the worst edge from the nearest straight line, percent of the height
  double Outside = 0;      // pixels of the panel by which the picture leaves it
};

// What takes the photographer's angle out: the map from the photograph by a lens without fault to
// the panel, one unit high, that suits the marks best.
inline Homography UprightOf(WallScene scene) {
  scene.Seen.K1 = 0;
  PlaneLine panel;
  PlaneLine photo;
  for (const Mark& mark : MarksOn(scene, 9, 7)) {
    panel.push_back({mark.U * scene.Panel.Width / scene.Panel.Height, mark.V});
    photo.push_back({mark.X, mark.Y});
  }
  return Homography::Through(panel, photo).value().Inverse();
}

// The picture's edges through the registers, off the wall, seen by a camera without lens faults.
// upright, if any, maps what is seen before it is measured.
inline SeenPicture PictureOn(const WallScene& scene, const CorrectionData& correction,
                             const Homography& upright = {}) {
  constexpr int kParts = 40;
  const RegisterSet registers = BuildRegisters(correction, scene.Panel);
  const auto rows = PanelLinesOf(registers[kHorizontal], kHorizontal, scene.Panel);
  const auto columns = PanelLinesOf(registers[kVertical], kVertical, scene.Panel);
  Camera camera = scene.Seen;
  camera.K1 = 0;
  const auto view = CameraView::Of(scene.Wall, scene.Panel, camera);
  const double width = scene.Panel.Width;
  const double height = scene.Panel.Height;
  SeenPicture seen;
  const auto photographed = [&](double u, double v) {
    double x = u;
    double y = v;
    for (int step = 0; step < 50; ++step) {
      const PanelLine row = LineAt(rows, y);
      x = (u - row.Offset) / row.Slope;
      const PanelLine column = LineAt(columns, x);
      y = (v - column.Offset) / column.Slope;
    }
    seen.Outside = std::max({seen.Outside, -x, x - width, -y, y - height});
    const auto at = view->PhotoPosition(x, y).value();
    return upright({at[0], at[1]});
  };
  const auto top = photographed(width / 2, 0);
  const auto bottom = photographed(width / 2, height);
  const double seen_height = DistanceOf(top, bottom);
  for (const auto& [from, to] : {std::array{std::array{0.0, 0.0}, std::array{width, 0.0}},
                                 std::array{std::array{0.0, height}, std::array{width, height}},
                                 std::array{std::array{0.0, 0.0}, std::array{0.0, height}},
                                 std::array{std::array{width, 0.0}, std::array{width, height}}}) {
    PlaneLine points;
    for (int i = 0; i <= kParts; ++i) {
      const double share = static_cast<double>(i) / kParts;
      points.push_back(
          photographed(from[0] + share * (to[0] - from[0]), from[1] + share * (to[1] - from[1])));
    }
    seen.OffStraight = std::max(seen.OffStraight, 100 * OffLine(points) / seen_height);
  }
  return seen;
}

}  // namespace warpline
