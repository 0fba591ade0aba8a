#include <benchmark/benchmark.h>
#include <wx/dcmemory.h>
#include <wx/graphics.h>
#include <wx/slider.h>

#include <memory>

#include "app/engine.h"
#include "ui/LSSmain.h"
#include "ui/LSSview.h"
#include "ui/LSSview_painter.h"
#include "ui/window_messages.h"

// From a slider's move to the repainted preview: our own work alone, at 1920 by 1080 pixels.

namespace warpline {
namespace {

constexpr int kWidth = 1920;
constexpr int kHeight = 1080;

struct Bench {
  Bench() {
    LSSglobal& global = engine.global;
    global.Correction.ScreenType = 2;
    ResetToScreenType(global.Correction);
    global.Settings.DemoMode = 1;
    window = new LSSmain({engine, busy, {}, {}, {}, {}, {}, {}, {}, {}});
    window->ShowFirst();
    wxYield();
  }
  ~Bench() { window->Destroy(); }

  WindowMessages display;
  WindowBusy busy;
  Engine engine{display, busy};
  LSSmain* window = nullptr;
};

void MoveSlider(wxSlider& bar, int value) {
  bar.SetValue(value);
  wxCommandEvent event(wxEVT_SLIDER, bar.GetId());
  event.SetEventObject(&bar);
  bar.ProcessWindowEvent(event);
}

void Paint(wxBitmap& bitmap, const PreviewDrawing& drawing) {
  wxMemoryDC dc(bitmap);
  dc.SetBackground(*wxBLACK_BRUSH);
  dc.Clear();
  const std::unique_ptr<wxGraphicsContext> context(wxGraphicsContext::Create(dc));
  PaintPreview(*context, drawing, kWidth, kHeight);
}

void SliderMoveToRepaintedPreview(benchmark::State& state) {
  Bench bench;
  auto* bar = dynamic_cast<wxSlider*>(wxWindow::FindWindowByName("ctrl_bar1", bench.window));
  wxBitmap bitmap(kWidth, kHeight);
  int value = 0;
  for (auto step : state) {
    value = value % 100 + 1;
    MoveSlider(*bar, value);
    Paint(bitmap, bench.window->Controller().Preview());
  }
}
BENCHMARK(SliderMoveToRepaintedPreview)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace warpline
