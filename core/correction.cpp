#include "core/correction.h"

#include <algorithm>
#include <initializer_list>

namespace warpline {
namespace {

void Seed(CurveDefinition& curve, std::int16_t interpolation,
          std::initializer_list<CurvePoint> points) {
  curve.CorrePointNum = static_cast<std::int16_t>(points.size());
  curve.CorreInterp = interpolation;
  std::copy(points.begin(), points.end(), curve.CorreDataPts.begin());
}

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
  switch (shape) {
    case kArch:
      Seed(curve, kQuadratic, {{0.0, 0.8}, {0.5, 1.0}, {1.0, 0.8}});
      break;
    case kDiagonalLine:
      Seed(curve, kStraightLine, {{0.0, 0.75}, {1.0, 1.0}});
      break;
    case kTriangle:
      Seed(curve, kStraightLine, {{0.0, 0.75}, {0.5, 1.0}, {1.0, 0.75}});
      break;
    default:
      break;
  }
}

void ResetToScreenType(CorrectionData& correction) {
  const auto& shapes = kScreenTypeShapes.at(static_cast<std::size_t>(correction.ScreenType));
  for (const Axis axis : {kHorizontal, kVertical}) {
    correction.Axes[axis] = ResetAxisParameters(correction.Projection[axis]);
    ResetCurveDefinition(correction.Curves[axis], shapes[axis]);
  }
}

}  // namespace warpline
