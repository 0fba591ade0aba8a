#include "app/curve_graph.h"

#include <gtest/gtest.h>

namespace warpline {
namespace {

TEST(GraphPositionOf, RoundsHalvesToEven) {
  const std::pair<CurvePoint, GraphPosition> cases[] = {
      {{0.0, 1.0}, {0, 25}},          {{1.0, 0.75}, {500, 150}},
      {{0.47, 0.8}, {235, 125}},      {{0.125, 0.875}, {62, 87}},  // 62.5 and 437.5
      {{1.0 / 3, 0.9999}, {167, 25}}, {{0.127, 0.877}, {64, 87}},  // 63.5 and 438.5
  };
  for (const auto& [point, position] : cases) {
    EXPECT_EQ(GraphPositionOf(point), position) << point.X << ", " << point.Y;
  }
  EXPECT_DOUBLE_EQ(GraphX(235), 0.47);
  EXPECT_DOUBLE_EQ(GraphY(25), 1.0);
  EXPECT_DOUBLE_EQ(GraphY(150), 0.75);
}

TEST(CurveLine, SpansTheGraphAndKeepsSwingsBeyondIt) {
  const std::vector<GraphPlace> line = CurveLine({0.75, 1.1, 1.0});
  ASSERT_EQ(line.size(), 3u);
  EXPECT_EQ(line[0], (GraphPlace{0, 150}));
  EXPECT_EQ(line[1].x, 250);
  EXPECT_NEAR(line[1].y, -25, 1e-9);
  EXPECT_EQ(line[2], (GraphPlace{500, 25}));
  EXPECT_TRUE(CurveLine({}).empty());
}

TEST(GridLines, StandAtRoundFigures) {
  const std::vector<GridLine> lines = GridLines();
  ASSERT_EQ(lines.size(), 17u);
  std::string labels;
  for (const GridLine& line : lines) labels += line.label + " ";
  EXPECT_EQ(labels, "0.0 0.1 0.2 0.3 0.4 0.5 0.6 0.7 0.8 0.9 1.0 1.00 0.95 0.90 0.85 0.80 0.75 ");
  EXPECT_EQ(lines[7].from, (GraphPlace{350, 25}));
  EXPECT_EQ(lines[7].to, (GraphPlace{350, 150}));
  EXPECT_EQ(lines[12].from, (GraphPlace{0, 50}));
  EXPECT_EQ(lines[12].to, (GraphPlace{500, 50}));
}

TEST(CoordinateOf, TakesAPointOrACommaAndNumbersAlone) {
  const std::pair<const char*, std::optional<double>> cases[] = {
      {"0.25", 0.25}, {" ,5 ", 0.5}, {"-1", -1},  {"1e-1", {}}, {"", {}},
      {"  ", {}},     {"0.5x", {}},  {"nan", {}}, {"inf", {}},  {"1.2.3", {}}};
  for (const auto& [figures, value] : cases) EXPECT_EQ(CoordinateOf(figures), value) << figures;
}

TEST(PlaceGraph, FillsBothDirectionsAndGoesBackAndForth) {
  const GraphMargins margins{40, 10, 20, 30};
  const GraphPlacement wide = PlaceGraph(1460, 290, margins);  // 1400 by 250 left for the grid
  EXPECT_DOUBLE_EQ(wide.scale_x, 2.8);
  EXPECT_DOUBLE_EQ(wide.scale_y, 2);
  EXPECT_EQ(wide.ToPixels({0, 25}), (GraphPlace{40, 10}));
  EXPECT_EQ(wide.ToPixels({500, 150}), (GraphPlace{1440, 260}));
  EXPECT_EQ(wide.ToUnits({602, 109}), (GraphPosition{201, 74}));  // 200.7 right, 74.5 down
  EXPECT_EQ(wide.ToUnits({-1e300, 1e300}), (GraphPosition{-100000, 100000}));
  EXPECT_GT(PlaceGraph(0, 0, margins).scale_x, 0);
  EXPECT_GT(PlaceGraph(0, 0, margins).scale_y, 0);
}

}  // namespace
}  // namespace warpline
