#include "core/correction.h"

#include <algorithm>

namespace warpline {
namespace {

// What a curve of a shape starts as.
struct ShapeRow {
  CurveShape shape;
  std::int16_t interpolation;
  std::int16_t count;
  std::array<CurvePoint, 3> points;
};

constexpr std::array kShapes{
    ShapeRow{kArch, kQuadratic, 3, {{{0.0, 0.8}, {0.5, 1.0}, {1.0, 0.8}}}},
    ShapeRow{kDiagonalLine, kStraightLine, 2, {{{0.0, 0.75}, {1.0, 1.0}}}},
    ShapeRow{kTriangle, kStraightLine, 3, {{{0.0, 0.75}, {0.5, 1.0}, {1.0, 0.75}}}},
};

}  // namespace

std::int16_t ResetOptical(std::int16_t projection_flag) {
  return projection_flag == 0 ? -32 : 32;
}

AxisParameters ResetAxisParameters(std::int16_t projection_flag) {
  AxisParameters parameters;
  parameters.Optical = ResetOptical(projection_flag);
  return parameters;
}

void ResetCurveDefinition(CurveDefinition& curve, int shape) {
  curve.CorreFixed = 1;
  curve.CorreSymmetry = 0;
  curve.CorreDataPts = {};
  const auto* row =
      std::find_if(kShapes.begin(), kShapes.end(),
                   [shape](const ShapeRow& candidate) { return candidate.shape == shape; });
  if (row == kShapes.end()) return;
  curve.CorrePointNum = row->count;
  curve.CorreInterp = row->interpolation;
  std::copy_n(row->points.begin(), row->count, curve.CorreDataPts.begin());
}

void ResetToScreenType(CorrectionData& correction) {
  const ScreenTypeRow& type = RowOfScreenType(correction.ScreenType);
  for (const Axis axis : {kHorizontal, kVertical}) {
    correction.Axes[axis] = ResetAxisParameters(correction.Projection[axis]);
    ResetCurveDefinition(correction.Curves[axis], type.shapes[axis]);
  }
}

}  // namespace warpline
