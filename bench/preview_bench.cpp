#include <benchmark/benchmark.h>

#include "app/preview_geometry.h"
#include "app/preview_svg.h"

// The geometry of a redraw of the preview, as every slider move asks for it.

namespace warpline {
namespace {

CorrectionData Arches(std::int16_t interpolation) {
  CorrectionData correction;
  correction.ScreenType = kOtherScreens;
  for (const Axis axis : {kHorizontal, kVertical}) {
    correction.Axes[axis].Distortion = 40;
    correction.Axes[axis].Optical = 0;
    ResetCurveDefinition(correction.Curves[axis], kArch);
    correction.Curves[axis].CorrePointNum = 5;
    correction.Curves[axis].CorreInterp = interpolation;
    correction.Curves[axis].CorreDataPts = {
        {{0, 0.8}, {0.25, 0.95}, {0.5, 1}, {0.75, 0.95}, {1, 0.8}}};
  }
  return correction;
}

void PreviewBands(benchmark::State& state) {
  const CorrectionData correction = Arches(static_cast<std::int16_t>(state.range(0)));
  for (auto step : state) benchmark::DoNotOptimize(Redraw(correction, correction.Axes));
}
BENCHMARK(PreviewBands)->ArgName("interpolation")->DenseRange(kStraightLine, kBSpline);

void PreviewPicture(benchmark::State& state) {
  const CorrectionData correction = Arches(kQuartic);
  const PreviewDrawing drawing = Redraw(correction, correction.Axes);
  for (auto step : state) benchmark::DoNotOptimize(PreviewSvg(drawing));
}
BENCHMARK(PreviewPicture);

}  // namespace
}  // namespace warpline
