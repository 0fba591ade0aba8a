#include <benchmark/benchmark.h>
#include <wx/dcmemory.h>
#include <wx/frame.h>

#include "app/engine.h"
#include "ui/LSSmain.h"
#include "ui/picture_window.h"
#include "ui/window_messages.h"

// From the choice of a display to its first frame at 1920 by 1200, in at most 50 ms of our own
// work: drawing the picture, making it the toolkit's, and painting it.

namespace warpline {
namespace {

const DisplayPlace kDisplay{0, "", {0, 0, 1920, 1200}, {1920, 1200}};

void DisplayChosenToFirstFrame(benchmark::State& state) {
  WindowMessages display;
  WindowBusy busy;
  Engine engine(display, busy);
  engine.global.Settings.DemoMode = 1;
  auto* main = new LSSmain({engine, busy, {}, {}, {}, {}, {}, {}, {}, {}});
  main->ShowFirst();
  wxYield();
  PictureControl control(engine, main->Controller(), [](std::string_view) {});
  auto* picture = new PictureWindow(main, "", control, {});
  control.Begin({{1920, 1200}, 100});
  control.ChoosePicture(static_cast<int>(state.range(0)));
  for (auto step : state) {
    picture->ShowOn(kDisplay);
    picture->Update();
    state.PauseTiming();
    wxYield();
    picture->End();
    wxYield();
    state.ResumeTiming();
  }
  main->Destroy();
  wxYield();
}
BENCHMARK(DisplayChosenToFirstFrame)
    ->ArgName("picture")
    ->DenseRange(1, 6)
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace warpline
