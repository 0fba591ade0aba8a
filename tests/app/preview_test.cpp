#include <gtest/gtest.h>

#include <string>
#include <variant>
#include <vector>

#include "app/preview_geometry.h"
#include "app/preview_svg.h"
#include "core/fault.h"

namespace warpline {
namespace {

// Cylindrical screen: the horizontal curve rises from 0.75 to 1, the vertical one is an arch from
// 0.8 over 1 to 0.8.
CorrectionData Cylinder() {
  CorrectionData correction;
  ResetToScreenType(correction);
  return correction;
}

AxisParameters Parameters(int distortion, int optical, int position = 0, int amplitude = 0) {
  AxisParameters parameters;
  parameters.Distortion = static_cast<std::int16_t>(distortion);
  parameters.Optical = static_cast<std::int16_t>(optical);
  parameters.Amplitude = static_cast<std::int16_t>(amplitude);
  parameters.Position = position;
  return parameters;
}

const std::vector<PreviewPoint>& BandPoints(const PreviewDrawing& drawing, std::size_t index) {
  return std::get<PreviewPolyline>(drawing.at(index)).points;
}

struct BandCase {
  std::string name;
  Axis axis;
  std::int16_t projection;
  AxisParameters parameters;
  double bent_first;  // the bent edge on the first line
  double bent_last;   // and on the last line drawn
  double opposite_first;
};

TEST(PreviewBands, FollowProfilePositionAndOpticalCentre) {
  const BandCase cases[] = {
      {"plain", kHorizontal, 0, Parameters(0, -32), 0, 0, 800},
      {"plain, centre elsewhere", kHorizontal, 0, Parameters(0, 10), 0, 0, 800},
      {"bent", kHorizontal, 0, Parameters(40, -32), 80, 2.0 / 15, 800},
      {"turned over", kHorizontal, 0, Parameters(-40, -32), 0, 79.0 + 13.0 / 15, 800},
      {"centre in the middle", kHorizontal, 0, Parameters(40, 0), 80, 2.0 / 15, 720},
      {"centre beyond the edge", kHorizontal, 0, Parameters(40, -64), 80, 2.0 / 15, 12400.0 / 15},
      {"centre at the far edge", kHorizontal, 0, Parameters(40, 32), 80, 2.0 / 15, -4320},
      {"moved", kHorizontal, 0, Parameters(40, -32, 16384), -120, -200 + 2.0 / 15, 600},
      {"half a step down to even", kHorizontal, 0, Parameters(0, -32, 3072), -562.0 / 15,
       -562.0 / 15, 800 - 562.0 / 15},
      {"half a step up to even", kHorizontal, 0, Parameters(0, -32, 1024), -188.0 / 15, -188.0 / 15,
       800 - 188.0 / 15},
      {"wider", kHorizontal, 0, Parameters(0, -32, 0, 64), -100, -100, 800},
      {"to the right", kHorizontal, 1, Parameters(40, 32), 720, 800 - 2.0 / 15, 0},
      {"to the right, moved", kHorizontal, 1, Parameters(40, 32, 16384), 520, 600 - 2.0 / 15, -200},
      {"to the right, centre in the middle", kHorizontal, 1, Parameters(40, 0), 720, 800 - 2.0 / 15,
       80},
      {"to the right, centre at the far edge", kHorizontal, 1, Parameters(40, -32), 720,
       800 - 2.0 / 15, 5120},
      {"arch", kVertical, 0, Parameters(50, -32), 60, 896.0 / 15, 600},
      {"arch, centre in the middle", kVertical, 0, Parameters(50, 0), 60, 896.0 / 15, 540},
      {"arch, moved", kVertical, 0, Parameters(50, -32, -16384), 210, 150 + 896.0 / 15, 750},
      {"downwards", kVertical, 1, Parameters(50, 32), 540, 600 - 896.0 / 15, 0},
  };
  for (const BandCase& row : cases) {
    SCOPED_TRACE(row.name);
    CorrectionData correction = Cylinder();
    correction.Projection[row.axis] = row.projection;
    correction.Axes[row.axis] = row.parameters;
    const PreviewDrawing drawing = Redraw(correction, correction.Axes);
    const bool horizontal = row.axis == kHorizontal;
    const auto& bent = BandPoints(drawing, horizontal ? 0 : 2);
    const auto& opposite = BandPoints(drawing, horizontal ? 1 : 3);
    ASSERT_EQ(bent.size(), horizontal ? 599U : 799U);
    ASSERT_EQ(opposite.size(), bent.size());
    const auto across = [&](PreviewPoint point) { return horizontal ? point.x : point.y; };
    const auto along = [&](PreviewPoint point) { return horizontal ? point.y : point.x; };
    EXPECT_NEAR(across(bent.front()), row.bent_first, 1e-9);
    EXPECT_NEAR(across(bent.back()), row.bent_last, 1e-9);
    EXPECT_NEAR(across(opposite.front()), row.opposite_first, 1e-9);
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
  const auto& frame = std::get<PreviewBox>(drawing[4]);
  EXPECT_EQ(frame.colour, kPreviewCyan);
  EXPECT_EQ(frame.corner, (PreviewPoint{0, 0}));
  EXPECT_EQ(frame.width, 800);
  EXPECT_EQ(frame.height, 600);
  const PreviewPoint ticks[][2] = {
      {{0, 0}, {20, 20}},       {{0, 300}, {20, 300}},    {{0, 600}, {20, 580}},
      {{400, 0}, {400, 20}},    {{400, 600}, {400, 580}}, {{800, 0}, {780, 20}},
      {{800, 300}, {780, 300}}, {{800, 600}, {780, 580}},
  };
  for (std::size_t i = 0; i < 8; ++i) {
    SCOPED_TRACE(i);
    const auto& tick = std::get<PreviewLine>(drawing[5 + i]);
    EXPECT_EQ(tick.colour, kPreviewGreen);
    EXPECT_EQ(tick.from, ticks[i][0]);
    EXPECT_EQ(tick.to, ticks[i][1]);
  }
}

struct MarkCase {
  std::string name;
  AxisParameters horizontal;
  AxisParameters vertical;
  PreviewPoint centre;
  double radius_x;
  double radius_y;
  bool cross;
};

TEST(PreviewMarks, FirstDifferenceAloneIsDrawn) {
  const AxisParameters plain;
  const MarkCase cases[] = {
      {"amplitude H", Parameters(0, -32, 0, 128), plain, {400, 300}, 450, 300, false},
      {"amplitude V", plain, Parameters(0, -32, 0, -64), {400, 300}, 300, 225, false},
      {"amplitude H before V",
       Parameters(0, -32, 0, 64),
       Parameters(0, -32, 0, 64),
       {400, 300},
       375,
       300,
       false},
      {"amplitude V before position H",
       Parameters(0, -32, 8192),
       Parameters(0, -32, 0, 64),
       {400, 300},
       300,
       375,
       false},
      {"position H", Parameters(0, -32, 8192), plain, {300, 300}, 300, 300, true},
      {"position H before V",
       Parameters(0, -32, -8192),
       Parameters(0, -32, 8192),
       {500, 300},
       300,
       300,
       true},
      {"position V", Parameters(30, -32), Parameters(30, -32, -16384), {400, 450}, 300, 300, true},
      {"position in steps", Parameters(0, -32, 123), plain, {400 - 23.0 / 15, 300}, 300, 300, true},
  };
  for (const MarkCase& row : cases) {
    SCOPED_TRACE(row.name);
    CorrectionData correction = Cylinder();
    const auto reference = correction.Axes;
    correction.Axes = {row.horizontal, row.vertical};
    const PreviewDrawing drawing = Redraw(correction, reference);
    ASSERT_EQ(drawing.size(), row.cross ? 3U : 1U);
    const auto& circle = std::get<PreviewEllipse>(drawing[0]);
    EXPECT_EQ(circle.colour, kPreviewBlue);
    EXPECT_NEAR(circle.centre.x, row.centre.x, 1e-9);
    EXPECT_NEAR(circle.centre.y, row.centre.y, 1e-9);
    EXPECT_EQ(circle.radius_x, row.radius_x);
    EXPECT_EQ(circle.radius_y, row.radius_y);
    if (!row.cross) continue;
    const auto& level = std::get<PreviewLine>(drawing[1]);
    EXPECT_EQ(level.from, (PreviewPoint{0, circle.centre.y}));
    EXPECT_EQ(level.to, (PreviewPoint{800, circle.centre.y}));
    const auto& upright = std::get<PreviewLine>(drawing[2]);
    EXPECT_EQ(upright.from, (PreviewPoint{circle.centre.x, 0}));
    EXPECT_EQ(upright.to, (PreviewPoint{circle.centre.x, 600}));
    EXPECT_EQ(upright.colour, kPreviewBlue);
  }
}

TEST(PreviewMarks, OtherDifferencesKeepTheBands) {
  CorrectionData correction = Cylinder();
  const auto reference = correction.Axes;
  correction.Axes[kHorizontal] = Parameters(40, 0);
  correction.Axes[kHorizontal].Linearity = 5;
  correction.Axes[kHorizontal].Stadium = 1;
  EXPECT_EQ(BandPoints(Redraw(correction, reference), 0).front(), (PreviewPoint{80, 0}));
}

TEST(PreviewFaults, CurveWithoutAValueOrABandOutOfRange) {
  const auto fault_of = [](const CorrectionData& correction) {
    try {
      Redraw(correction, correction.Axes);
    } catch (const Fault& fault) {
      return static_cast<int>(fault.code());
    }
    return 0;
  };
  CorrectionData upright = Cylinder();
  upright.Curves[kVertical].CorreInterp = kStraightLine;
  upright.Curves[kVertical].CorrePointNum = 2;
  upright.Curves[kVertical].CorreDataPts[1] = {0, 1};
  EXPECT_EQ(fault_of(upright), static_cast<int>(FaultCode::kNotANumber));

  CorrectionData far_away = Cylinder();
  far_away.Axes[kHorizontal] = Parameters(32767, 32);
  far_away.Curves[kHorizontal].CorreDataPts[0].Y = 1000;
  EXPECT_EQ(fault_of(far_away), static_cast<int>(FaultCode::kDoesNotFit));
}

TEST(DrawAuxLine, OutlinesThreePanelFormats) {
  const PreviewDrawing drawing = DrawAuxLine();
  ASSERT_EQ(drawing.size(), 8U);
  EXPECT_EQ(std::get<PreviewLine>(drawing[0]).from, (PreviewPoint{0, 300}));
  EXPECT_EQ(std::get<PreviewLine>(drawing[0]).to, (PreviewPoint{800, 300}));
  EXPECT_EQ(std::get<PreviewLine>(drawing[1]).from, (PreviewPoint{400, 0}));
  EXPECT_EQ(std::get<PreviewLine>(drawing[1]).to, (PreviewPoint{400, 600}));
  const struct {
    PreviewPoint corner;
    double width, height, radius;
  } formats[] = {
      {{0, 0}, 800, 600, 300}, {{-112, -84}, 1024, 768, 384}, {{-240, -212}, 1280, 1024, 512}};
  for (std::size_t i = 0; i < 3; ++i) {
    SCOPED_TRACE(i);
    const auto& box = std::get<PreviewBox>(drawing[2 + 2 * i]);
    EXPECT_EQ(box.colour, kPreviewWhite);
    EXPECT_EQ(box.corner, formats[i].corner);
    EXPECT_EQ(box.width, formats[i].width);
    EXPECT_EQ(box.height, formats[i].height);
    const auto& circle = std::get<PreviewEllipse>(drawing[3 + 2 * i]);
    EXPECT_EQ(circle.centre, (PreviewPoint{400, 300}));
    EXPECT_EQ(circle.radius_x, formats[i].radius);
    EXPECT_EQ(circle.radius_y, formats[i].radius);
  }
}

TEST(PlacePreview, LargestPanelInTheMiddle) {
  const struct {
    double width, height, scale, offset_x, offset_y;
  } cases[] = {{800, 600, 1, 0, 0},
               {1600, 600, 1, 400, 0},
               {400, 900, 0.5, 0, 300},
               {1920, 1080, 1.8, 240, 0},
               {0, 0, 0, 0, 0}};
  for (const auto& row : cases) {
    const PreviewPlacement placement = PlacePreview(row.width, row.height);
    EXPECT_NEAR(placement.scale, row.scale, 1e-12);
    EXPECT_NEAR(placement.offset_x, row.offset_x, 1e-9);
    EXPECT_NEAR(placement.offset_y, row.offset_y, 1e-9);
  }
}

TEST(PreviewSvg, HoldsEveryKindOfShape) {
  const PreviewDrawing drawing{
      PreviewPolyline{kPreviewYellow, {{2.0 / 15, 0}, {-20, 1}}},
      PreviewLine{kPreviewGreen, {0, 0}, {20, 20}},
      PreviewBox{{1, 16, 255}, {0, 0}, 800, 600},
      PreviewEllipse{kPreviewBlue, {400, 300}, 450, 300.5},
  };
  EXPECT_EQ(PreviewSvg(drawing),
            "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"920\" height=\"621\""
            " viewBox=\"-60 -10.5 920 621\">\n"
            "<rect fill=\"#000000\" x=\"-60\" y=\"-10.5\" width=\"920\" height=\"621\"/>\n"
            "<g fill=\"none\" stroke-width=\"2\" stroke-linejoin=\"round\">\n"
            "<polyline stroke=\"#ffff00\" points=\"0.133,0 -20,1\"/>\n"
            "<line stroke=\"#00ff00\" x1=\"0\" y1=\"0\" x2=\"20\" y2=\"20\"/>\n"
            "<rect stroke=\"#0110ff\" x=\"0\" y=\"0\" width=\"800\" height=\"600\"/>\n"
            "<ellipse stroke=\"#0000ff\" cx=\"400\" cy=\"300\" rx=\"450\" ry=\"300.5\"/>\n"
            "</g>\n</svg>\n");
}

}  // namespace
}  // namespace warpline
