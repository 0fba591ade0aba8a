#include <benchmark/benchmark.h>
#include <wx/bitmap.h>
#include <wx/dcmemory.h>
#include <wx/graphics.h>
#include <wx/settings.h>

#include <memory>

#include "app/curve_editor.h"
#include "app/engine.h"
#include "ui/LSSwedit_painter.h"
#include "ui/window_busy.h"
#include "ui/window_messages.h"

// Dragging a point of the curve editor at 200 %: the move, the curve behind it and the whole graph
// painted anew, in at most 8 ms.

namespace warpline {
namespace {

constexpr int kGraphWidth = 1652;  // pixels: the window as it opens, at 200 %
constexpr int kGraphHeight = 600;
constexpr double kDip = 2;

// As many points as there can be.
CurveDefinition FullCurve(std::int16_t interpolation) {
  CurveDefinition curve;
  curve.CorreFixed = 0;
  curve.CorrePointNum = kMaxCurvePoints;
  curve.CorreInterp = interpolation;
  for (std::size_t i = 0; i < kMaxCurvePoints; ++i) {
    const double x = static_cast<double>(i) / (kMaxCurvePoints - 1);
    curve.CorreDataPts[i] = {x, 1 - (x - 0.5) * (x - 0.5)};
  }
  return curve;
}

void DragPoint(benchmark::State& state) {
  WindowMessages display;
  WindowBusy busy;
  Engine engine(display, busy);
  engine.global.Correction.Curves[kHorizontal] =
      FullCurve(static_cast<std::int16_t>(state.range(0)));
  CurveEditor editor(engine.global, kHorizontal, engine.files, engine.messages);
  const GraphPosition start = editor.GraphPositions()[7];
  editor.Press(start.x, start.y);
  wxBitmap picture(kGraphWidth, kGraphHeight);
  const wxFont font = wxSystemSettings::GetFont(wxSYS_DEFAULT_GUI_FONT).Scaled(kDip);
  const GraphMargins margins = WaveMargins(kDip, 40 * kDip, 80 * kDip, 16 * kDip);
  int move = 0;
  for (auto step : state) {
    editor.Drag(start.x + move % 8, start.y + move % 60);
    ++move;
    wxMemoryDC dc(picture);
    const std::unique_ptr<wxGraphicsContext> context(wxGraphicsContext::Create(dc));
    PaintWave(*context, editor, {kGraphWidth, kGraphHeight, kDip, margins, true, {}, font, {}});
    context->Flush();
  }
}
BENCHMARK(DragPoint)
    ->ArgName("interpolation")
    ->DenseRange(kStraightLine, kBSpline)
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace warpline
