#include <gtest/gtest.h>

#include "app/preview_geometry.h"
#include "app/preview_svg.h"
#include "tests/support/curves.h"
#include "tests/support/fault_of.h"

namespace warpline {
namespace {

// Cylindrical screen: the horizontal curve rises from 0.75 to 1, the vertical one is an arch from
// 0.8 over 1 to 0.8.
CorrectionData Cylinder() {
  CorrectionData correction;
  ResetToScreenType(correction);
  return correction;
}

const std::vector<PreviewPoint>& BandPoints(const PreviewDrawing& drawing, std::size_t index) {
  return std::get<PreviewPolyline>(drawing.at(index)).points;
}

void ExpectLine(const PreviewShape& shape, PreviewColour colour, PreviewPoint from,
                PreviewPoint to) {
  const auto& line = std::get<PreviewLine>(shape);
  EXPECT_EQ(line.colour, colour);
  EXPECT_EQ(line.from, from);
  EXPECT_EQ(line.to, to);
}

void ExpectBox(const PreviewShape& shape, PreviewColour colour, PreviewPoint corner, double width,
               double height) {
  const auto& box = std::get<PreviewBox>(shape);
  EXPECT_EQ(box.colour, colour);
  EXPECT_EQ(box.corner, corner);
  EXPECT_EQ(box.width, width);
  EXPECT_EQ(box.height, height);
}

// Name, axis, projection, parameters; the bent edge on the first and the last line drawn, and the
// opposite one on the first.
using BandCase =
    std::tuple<const char*, Axis, std::int16_t, AxisParameters, double, double, double>;

TEST(PreviewBands, FollowProfilePositionAndOpticalCentre) {
  const Axis h = kHorizontal, v = kVertical;
  const double down = -562.0 / 15, up = -188.0 / 15, arch = 896.0 / 15, last = 2.0 / 15;
  const BandCase cases[] = {
      {"plain", h, 0, Parameters(0, -32), 0, 0, 800},
      {"plain, centre elsewhere", h, 0, Parameters(0, 10), 0, 0, 800},
      {"bent", h, 0, Parameters(40, -32), 80, last, 800},
      {"turned over", h, 0, Parameters(-40, -32), 0, 79.0 + 13.0 / 15, 800},
      {"centre in the middle", h, 0, Parameters(40, 0), 80, last, 720},
      {"centre beyond the edge", h, 0, Parameters(40, -64), 80, last, 12400.0 / 15},
      {"centre at the far edge", h, 0, Parameters(40, 32), 80, last, -4320},
      {"moved", h, 0, Parameters(40, -32, 16384), -120, -200 + last, 600},
      {"half a step down to even", h, 0, Parameters(0, -32, 3072), down, down, 800 + down},
      {"half a step up to even", h, 0, Parameters(0, -32, 1024), up, up, 800 + up},
      {"wider", h, 0, Parameters(0, -32, 0, 64), -100, -100, 800},
      {"to the right", h, 1, Parameters(40, 32), 720, 800 - last, 0},
      {"to the right, moved", h, 1, Parameters(40, 32, 16384), 520, 600 - last, -200},
      {"to the right, centre in the middle", h, 1, Parameters(40, 0), 720, 800 - last, 80},
      {"to the right, at the far edge", h, 1, Parameters(40, -32), 720, 800 - last, 5120},
      {"arch", v, 0, Parameters(50, -32), 60, arch, 600},
      {"arch, centre in the middle", v, 0, Parameters(50, 0), 60, arch, 540},
      {"arch, moved", v, 0, Parameters(50, -32, -16384), 210, 150 + arch, 750},
      {"downwards", v, 1, Parameters(50, 32), 540, 600 - arch, 0},
  };
  for (const auto& [name, axis, projection, parameters, bent_first, bent_last, opposite_first] :
       cases) {
    SCOPED_TRACE(name);
    CorrectionData correction = Cylinder();
    correction.Projection[axis] = projection;
    correction.Axes[axis] = parameters;
    const PreviewDrawing drawing = Redraw(correction, correction.Axes);
    const bool horizontal = axis == kHorizontal;
    const auto& bent = BandPoints(drawing, horizontal ? 0 : 2);
    const auto& opposite = BandPoints(drawing, horizontal ? 1 : 3);
    ASSERT_EQ(bent.size(), horizontal ? 599U : 799U);
    ASSERT_EQ(opposite.size(), bent.size());
    const auto across = [&](PreviewPoint point) { return horizontal ? point.x : point.y; };
    const auto along = [&](PreviewPoint point) { return horizontal ? point.y : point.x; };
    EXPECT_NEAR(across(bent.front()), bent_first, 1e-9);
    EXPECT_NEAR(across(bent.back()), bent_last, 1e-9);
    EXPECT_NEAR(across(opposite.front()), opposite_first, 1e-9);
    EXPECT_EQ(along(bent.front()), 0);
    EXPECT_EQ(along(opposite.back()), horizontal ? 598 : 798);
  }
}

TEST(PreviewBands, ComeInOrderWithFrameAndGuides) {
  const CorrectionData correction = Cylinder();
  const PreviewDrawing drawing = Redraw(correction, correction.Axes);
  ASSERT_EQ(drawing.size(), 13U);
  for (std::size_t i = 0; i < 4; ++i) {
    EXPECT_EQ(std::get<PreviewPolyline>(drawing[i]).colour, kPreviewYellow);
  }
  ExpectBox(drawing[4], kPreviewCyan, {0, 0}, 800, 600);
  const PreviewPoint ticks[][2] = {
      {{0, 0}, {20, 20}},       {{0, 300}, {20, 300}},    {{0, 600}, {20, 580}},
      {{400, 0}, {400, 20}},    {{400, 600}, {400, 580}}, {{800, 0}, {780, 20}},
      {{800, 300}, {780, 300}}, {{800, 600}, {780, 580}},
  };
  for (std::size_t i = 0; i < 8; ++i) {
    SCOPED_TRACE(i);
    ExpectLine(drawing[5 + i], kPreviewGreen, ticks[i][0], ticks[i][1]);
  }
}

// Name, parameters of each axis; the circle's centre and radii, and whether there is a cross.
using MarkCase =
    std::tuple<const char*, std::array<AxisParameters, 2>, PreviewPoint, double, double, bool>;

TEST(PreviewMarks, FirstDifferenceAloneIsDrawn) {
  const AxisParameters plain, wide = Parameters(0, -32, 0, 64), moved = Parameters(0, -32, 8192);
  const AxisParameters back = Parameters(0, -32, -8192), bent = Parameters(30, -32);
  const AxisParameters raised = Parameters(30, -32, -16384), steps = Parameters(0, -32, 123);
  const PreviewPoint middle{400, 300};
  const MarkCase cases[] = {
      {"amplitude H", {Parameters(0, -32, 0, 128), plain}, middle, 450, 300, false},
      {"amplitude V", {plain, Parameters(0, -32, 0, -64)}, middle, 300, 225, false},
      {"amplitude H before V", {wide, wide}, middle, 375, 300, false},
      {"amplitude V before position H", {moved, wide}, middle, 300, 375, false},
      {"position H", {moved, plain}, {300, 300}, 300, 300, true},
      {"position H before V", {back, moved}, {500, 300}, 300, 300, true},
      {"position V", {bent, raised}, {400, 450}, 300, 300, true},
      {"position in steps", {steps, plain}, {400 - 23.0 / 15, 300}, 300, 300, true},
  };
  for (const auto& [name, parameters, centre, radius_x, radius_y, cross] : cases) {
    SCOPED_TRACE(name);
    CorrectionData correction = Cylinder();
    const auto reference = correction.Axes;
    correction.Axes = parameters;
    const PreviewDrawing drawing = Redraw(correction, reference);
    ASSERT_EQ(drawing.size(), cross ? 3U : 1U);
    const auto& circle = std::get<PreviewEllipse>(drawing[0]);
    EXPECT_EQ(circle.colour, kPreviewBlue);
    EXPECT_NEAR(circle.centre.x, centre.x, 1e-9);
    EXPECT_NEAR(circle.centre.y, centre.y, 1e-9);
    EXPECT_EQ(circle.radius_x, radius_x);
    EXPECT_EQ(circle.radius_y, radius_y);
    if (!cross) continue;
    ExpectLine(drawing[1], kPreviewBlue, {0, circle.centre.y}, {800, circle.centre.y});
    ExpectLine(drawing[2], kPreviewBlue, {circle.centre.x, 0}, {circle.centre.x, 600});
  }
}

TEST(PreviewMarks, OtherDifferencesKeepTheBands) {
  CorrectionData correction = Cylinder();
  const auto reference = correction.Axes;
  correction.Axes[kHorizontal] = {40, 0, 5, 0, 0, 1};
  EXPECT_EQ(BandPoints(Redraw(correction, reference), 0).front(), (PreviewPoint{80, 0}));
}

TEST(PreviewFaults, CurveWithoutAValueOrABandOutOfRange) {
  const auto fault_of = [](const CorrectionData& correction) {
    return FaultOf([&] { Redraw(correction, correction.Axes); });
  };
  CorrectionData upright = Cylinder();
  upright.Curves[kVertical] = {1, 0, 2, kStraightLine, {{{0, 0.8}, {0, 1}}}};
  EXPECT_EQ(fault_of(upright), FaultCode::kNotANumber);

  CorrectionData far_away = Cylinder();
  far_away.Axes[kHorizontal] = Parameters(32767, 32);
  far_away.Curves[kHorizontal].CorreDataPts[0].Y = 1000;
  EXPECT_EQ(fault_of(far_away), FaultCode::kDoesNotFit);
}

TEST(DrawAuxLine, OutlinesThreePanelFormats) {
  const PreviewDrawing drawing = DrawAuxLine();
  ASSERT_EQ(drawing.size(), 8U);
  ExpectLine(drawing[0], kPreviewWhite, {0, 300}, {800, 300});
  ExpectLine(drawing[1], kPreviewWhite, {400, 0}, {400, 600});
  const std::tuple<PreviewPoint, double, double, double> formats[] = {
      {{0, 0}, 800, 600, 300}, {{-112, -84}, 1024, 768, 384}, {{-240, -212}, 1280, 1024, 512}};
  for (std::size_t i = 0; i < 3; ++i) {
    SCOPED_TRACE(i);
    const auto& [corner, width, height, radius] = formats[i];
    ExpectBox(drawing[2 + 2 * i], kPreviewWhite, corner, width, height);
    const auto& circle = std::get<PreviewEllipse>(drawing[3 + 2 * i]);
    EXPECT_EQ(circle.centre, (PreviewPoint{400, 300}));
    EXPECT_EQ(circle.radius_x, radius);
    EXPECT_EQ(circle.radius_y, radius);
  }
}

TEST(PlacePreview, LargestPanelInTheMiddle) {
  constexpr double kCases[][5] = {{800, 600, 1, 0, 0},
                                  {1600, 600, 1, 400, 0},
                                  {400, 900, 0.5, 0, 300},
                                  {1920, 1080, 1.8, 240, 0},
                                  {0, 0, 0, 0, 0}};
  for (const auto& [width, height, scale, offset_x, offset_y] : kCases) {
    const PreviewPlacement placement = PlacePreview(width, height);
    EXPECT_NEAR(placement.scale, scale, 1e-12);
    EXPECT_NEAR(placement.offset_x, offset_x, 1e-9);
    EXPECT_NEAR(placement.offset_y, offset_y, 1e-9);
  }
}

TEST(PreviewSvg, HoldsEveryKindOfShape) {
  const Deviation deviation{AxisDeviation{2, 0, {{0, 0}, {384, 767}}},
                            AxisDeviation{2, 9, {{256, 639}}}};
  const PreviewDrawing drawing =
      Over(DrawDeviation(deviation, {1024, 768}),
           {
               PreviewPolyline{kPreviewYellow, {{2.0 / 15, 0}, {-20, 1}}},
               PreviewLine{kPreviewGreen, {0, 0}, {20, 20}},
               PreviewBox{{1, 16, 255}, {0, 0}, 800, 600},
               PreviewEllipse{kPreviewBlue, {400, 300}, 450, 300.5},
           });
  const std::string red = "<rect fill=\"#ff0000\" fill-opacity=\"0.471\" stroke=\"none\" ";
  EXPECT_EQ(PreviewSvg(drawing),
            "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"920\" height=\"621\""
            " viewBox=\"-60 -10.5 920 621\">\n"
            "<rect fill=\"#000000\" x=\"-60\" y=\"-10.5\" width=\"920\" height=\"621\"/>\n"
            "<g fill=\"none\" stroke-width=\"2\" stroke-linejoin=\"round\">\n" +
                red + "x=\"0\" y=\"0\" width=\"800\" height=\"4\"/>\n" + red +
                "x=\"0\" y=\"300\" width=\"800\" height=\"300\"/>\n" + red +
                "x=\"200\" y=\"0\" width=\"300\" height=\"600\"/>\n"
                "<polyline stroke=\"#ffff00\" points=\"0.133,0 -20,1\"/>\n"
                "<line stroke=\"#00ff00\" x1=\"0\" y1=\"0\" x2=\"20\" y2=\"20\"/>\n"
                "<rect stroke=\"#0110ff\" x=\"0\" y=\"0\" width=\"800\" height=\"600\"/>\n"
                "<ellipse stroke=\"#0000ff\" cx=\"400\" cy=\"300\" rx=\"450\" ry=\"300.5\"/>\n"
                "</g>\n</svg>\n");
}

}  // namespace
}  // namespace warpline
