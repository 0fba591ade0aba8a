#include <benchmark/benchmark.h>

#include "model/registers.h"
#include "picture/test_picture.h"
#include "picture/wall.h"

// A redraw of the simulated projector's views: the panel's picture from its registers, and how it
// lands on a wall.

namespace warpline::sim {
namespace {

RegisterSet Bowed(PanelSize panel) {
  CorrectionData correction;
  correction.ScreenType = 2;
  ResetToScreenType(correction);
  for (const Axis axis : {kHorizontal, kVertical}) correction.Axes[axis].Distortion = 60;
  return BuildRegisters(correction, panel);
}

void ProjectorPanel(benchmark::State& state) {
  const PanelSize panel{static_cast<int>(state.range(0)), static_cast<int>(state.range(1))};
  const RgbImage picture = TestPicture(panel);
  const RegisterSet registers = Bowed(panel);
  for (auto step : state) benchmark::DoNotOptimize(PanelPicture(picture, registers));
}
BENCHMARK(ProjectorPanel)
    ->ArgNames({"width", "height"})
    ->Args({1024, 768})
    ->Args({1920, 1200})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

void ProjectorWall(benchmark::State& state) {
  const RgbImage picture = PanelPicture(TestPicture({1920, 1200}), Bowed({1920, 1200}));
  Wall wall;
  wall.Shape = WallShape::kSphere;
  wall.Curvature = 0.2;
  for (auto step : state) benchmark::DoNotOptimize(WallPicture(picture, wall, {1280, 800}));
}
BENCHMARK(ProjectorWall)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
}  // namespace warpline::sim
