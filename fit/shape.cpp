#include "fit/shape.h"

#include <Eigen/Dense>
#include <algorithm>
#include <cmath>

#include "core/parameters.h"
#include "model/profile.h"

namespace warpline {
namespace {

constexpr int kDrawnLines = 169;  // the points of straight curves and folds fall on lines
constexpr double kLowestY = 0.75;
constexpr double kMillionths = 1e6;  // what files keep of a coordinate

CurveDefinition FreeCurve(Interpolation interpolation, std::span<const double> x) {
  CurveDefinition curve;
  curve.CorreInterp = interpolation;
  curve.CorrePointNum = static_cast<std::int16_t>(x.size());
  for (std::size_t i = 0; i < x.size(); ++i) curve.CorreDataPts[i].X = x[i];
  return curve;
}

std::vector<double> EvenPlaces(int count) {
  std::vector<double> x;
  x.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) {
    x.push_back(std::nearbyint(kMillionths * i / (count - 1)) / kMillionths);
  }
  return x;
}

// Where x runs evenly along each arc: the inner points stand in the middle of the arcs.
std::vector<double> SplinePlaces(int arcs) {
  std::vector<double> x{0};
  for (int i = 0; i < arcs; ++i) {
    x.push_back(std::nearbyint(kMillionths * (i + 0.5) / arcs) / kMillionths);
  }
  x.push_back(1);
  return x;
}

std::int16_t Held(ParameterField field, std::int16_t projection, double value) {
  const Range range = WindowRange(field, projection);
  return static_cast<std::int16_t>(std::clamp(std::nearbyint(value), static_cast<double>(range.low),
                                              static_cast<double>(range.high)));
}

std::int16_t ProjectionFor(double centre, Orientation orientation) {
  if (orientation) return *orientation;
  return centre > 0 ? std::int16_t{1} : std::int16_t{0};
}

// Distortion reaches a line the less, the farther the optical centre is from it: the profile's
// depth is Distortion / 100 / ReachOf.
double ReachOf(const AxisParameters& parameters, std::int16_t projection) {
  const double optical = parameters.Optical;
  return projection == 0 ? (32 - optical) / 64 : (32 + optical) / 64;
}

}  // namespace

ShapedAxis::ShapedAxis(const CurveFamily& family) : family_(family) {
  if (!family.Free) {
    basis_.emplace_back(kDrawnLines, 1.0);
    basis_.push_back(SampleCurve(family.Seed, kDrawnLines));
    least_y_ = std::ranges::min(basis_[1]);
    return;
  }
  for (std::size_t i = 0; i < static_cast<std::size_t>(family.Seed.CorrePointNum); ++i) {
    CurveDefinition one = family.Seed;
    for (CurvePoint& point : one.CorreDataPts) point.Y = 0;
    one.CorreDataPts[i].Y = 1;
    basis_.push_back(SampleCurve(one, kDrawnLines));
  }
}

AxisShape ShapedAxis::Even(double size) const {
  AxisShape shape{std::vector<double>(basis_.size(), size), 0, 0};
  if (!family_.Free) shape.Values[1] = 0;
  return shape;
}

AxisShape ShapedAxis::Nearest(const AxisLines& lines) const {
  Eigen::MatrixXd basis(kDrawnLines, static_cast<Eigen::Index>(basis_.size()));
  for (std::size_t i = 0; i < basis_.size(); ++i) {
    basis.col(static_cast<Eigen::Index>(i)) =
        Eigen::Map<const Eigen::VectorXd>(basis_[i].data(), kDrawnLines);
  }
  const Eigen::Map<const Eigen::VectorXd> sizes(lines.Sizes.data(), kDrawnLines);
  const Eigen::VectorXd values = basis.colPivHouseholderQr().solve(sizes);
  return {{values.begin(), values.end()}, lines.OpticalCentre, lines.Shift};
}

AxisLines ShapedAxis::Draw(const AxisShape& shape) const {
  AxisLines lines{std::vector<double>(kDrawnLines, 0.0), shape.OpticalCentre, 0, shape.Shift};
  for (std::size_t i = 0; i < basis_.size(); ++i) {
    for (std::size_t line = 0; line < lines.Sizes.size(); ++line) {
      lines.Sizes[line] += shape.Values[i] * basis_[i][line];
    }
  }
  lines.Extension = ExtensionFor(lines);
  return lines;
}

void ShapedAxis::Encode(const AxisShape& shape, Orientation orientation, CorrectionData& correction,
                        Axis axis) const {
  AxisParameters& parameters = correction.Axes[axis];
  const std::int16_t projection = ProjectionFor(shape.OpticalCentre, orientation);
  correction.Projection[axis] = projection;
  correction.Curves[axis] = family_.Seed;
  parameters = {};
  parameters.Optical = Held(ParameterField::kOptical, projection, shape.OpticalCentre * 32);
  parameters.Position = static_cast<std::int32_t>(
      std::clamp(std::nearbyint(-shape.Shift * 2 * 32768), -32767.0, 32767.0));
  const double reach = ReachOf(parameters, projection);
  if (!family_.Free) {
    // A curve that makes lines longer is the same one upside down about its least value.
    const double slope = shape.Values[1];
    const double full = shape.Values[0] + slope * (slope >= 0 ? 1 : least_y_);
    parameters.Amplitude = Held(ParameterField::kAmplitude, projection, (full - 1) * 256);
    parameters.Distortion =
        Held(ParameterField::kDistortion, projection, 100 * reach * slope / full);
    return;
  }
  const auto [low, high] = std::ranges::minmax(shape.Values);
  parameters.Amplitude =
      Held(ParameterField::kAmplitude, projection, std::ceil((high - 1) * 256 - 1e-9));
  const double full = 1 + parameters.Amplitude / 256.0;
  const double percent = 100 * reach * (1 - low / full) / (1 - kLowestY);
  parameters.Distortion = Held(ParameterField::kDistortion, projection, std::ceil(percent - 1e-9));
  const double depth = parameters.Distortion / 100.0 / reach;
  for (std::size_t i = 0; i < shape.Values.size(); ++i) {
    const double y = depth > 0 ? 1 - (1 - shape.Values[i] / full) / depth : 1;
    correction.Curves[axis].CorreDataPts[i].Y =
        std::nearbyint(std::clamp(y, kLowestY, 1.0) * kMillionths) / kMillionths;
  }
}

std::vector<FamilyPair> FamiliesOf(std::int16_t screen_type) {
  if (screen_type != kOtherScreens) {
    CorrectionData correction;
    correction.ScreenType = screen_type;
    ResetToScreenType(correction);
    return {{{{correction.Curves[kHorizontal], false}, {correction.Curves[kVertical], false}}}};
  }
  CurveDefinition spline = FreeCurve(kBSpline, SplinePlaces(10));
  spline.CorreFixed = 0;
  std::vector<FamilyPair> families;
  for (const CurveDefinition& curve :
       {FreeCurve(kQuartic, EvenPlaces(5)), FreeCurve(kStraightLine, EvenPlaces(3)),
        FreeCurve(kStraightLine, EvenPlaces(15)), spline}) {
    families.push_back({{{curve, true}, {curve, true}}});
  }
  return families;
}

double LowestCentre(Orientation orientation) {
  return orientation == 1 ? -kNearestCentre : -kFarthestCentre;
}

double HighestCentre(Orientation orientation) {
  return orientation == 0 ? kNearestCentre : kFarthestCentre;
}

}  // namespace warpline
