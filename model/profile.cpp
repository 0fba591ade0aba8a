#include "model/profile.h"

#include <algorithm>

#include "core/fault.h"
#include "model/curve.h"

namespace warpline {
namespace {

constexpr double kSmallestLineSize = 1.0;

// The depth of the correction and how a sample is read: as it stands, or turned upside down about
// the curve's minimum.
struct Depth {
  double r = 0.0;  // never negative
  bool mirrored = false;
  double minimum = 0.0;

  double SampleOf(double y) const { return mirrored ? 1 - y + minimum : y; }
};

Depth DepthOf(const AxisParameters& parameters, std::span<const double> samples) {
  Depth depth;
  depth.r = static_cast<double>(parameters.Distortion) / 100;
  if (depth.r < 0) {
    depth.mirrored = true;
    depth.minimum = *std::min_element(samples.begin(), samples.end());
    depth.r = -depth.r;
  }
  return depth;
}

double AmplitudeScale(const AxisParameters& parameters) {
  return 1 + static_cast<double>(parameters.Amplitude) / 256;
}

double OpticalFraction(const AxisParameters& parameters, std::int16_t projection_flag) {
  const double optical = parameters.Optical;
  return projection_flag == 0 ? (optical + 32) / 64 : (32 - optical) / 64;
}

// The share of the line that is left at depth t around the optical centre c. At exactly c = 1 a
// steep slope stands in for the division by zero.
double Extent(double t, double c) {
  if (c == 1.0) return (t - c) * 64 + (t - c);
  return (t - c) * c / (1 - c) + (t - c);
}

double AtLeastSmallest(double value) {
  return std::max(RequireFinite(value), kSmallestLineSize);
}

}  // namespace

AxisCorrection CorrectionOf(const CorrectionData& correction, Axis axis) {
  return {correction.Axes[axis], correction.Projection[axis], correction.Curves[axis]};
}

std::vector<double> SampleCurve(const CurveDefinition& curve, int line_count) {
  if (line_count < 1 || line_count > kMaxLineCount) throw Fault(FaultCode::kIndexOutOfRange);
  if (line_count == 1) throw Fault(FaultCode::kNotANumber);
  const PreparedCurve prepared = PrepareCurve(curve);
  std::vector<double> samples(static_cast<std::size_t>(line_count));
  const double last = line_count - 1;
  for (std::size_t i = 0; i < samples.size(); ++i) {
    samples[i] = EvaluateCurve(prepared, static_cast<double>(i) / last);
  }
  return samples;
}

std::vector<double> LineSizeProfile(const AxisParameters& parameters, std::int16_t projection_flag,
                                    std::span<const double> samples, int line_length) {
  const Depth depth = DepthOf(parameters, samples);
  const double a = AmplitudeScale(parameters);
  const double c = OpticalFraction(parameters, projection_flag);
  const double length = line_length;
  std::vector<double> profile(samples.size());
  std::transform(samples.begin(), samples.end(), profile.begin(), [&](double y) {
    const double t = 1 - (1 - depth.SampleOf(y)) * depth.r;
    const double e = Extent(t, c);
    return AtLeastSmallest((length - (1 - e) * length) * a);
  });
  return profile;
}

std::vector<double> PreviewProfile(const AxisParameters& parameters,
                                   std::span<const double> samples, int line_length) {
  const Depth depth = DepthOf(parameters, samples);
  const double a = AmplitudeScale(parameters);
  const double length = line_length;
  std::vector<double> profile(samples.size());
  std::transform(samples.begin(), samples.end(), profile.begin(), [&](double y) {
    const double sample = depth.SampleOf(y);
    const double v = (1 - sample) * depth.r + (1 - sample) * depth.r;
    return AtLeastSmallest((length - length * v) * a);
  });
  return profile;
}

}  // namespace warpline
