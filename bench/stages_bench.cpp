#include <benchmark/benchmark.h>

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "app/command_sequences.h"
#include "bench/test_correction.h"
#include "core/correction.h"
#include "files/formats.h"
#include "link/command_frames.h"
#include "model/profile.h"
#include "model/registers.h"
#include "picture/deviation.h"

// The stages between a correction and the bytes that leave, at two panel sizes and for every way of
// drawing a curve.

namespace warpline {
namespace {

constexpr std::array kPanels{PanelSize{1024, 768}, PanelSize{1920, 1200}};

PanelSize PanelOf(const benchmark::State& state) {
  return kPanels[static_cast<std::size_t>(state.range(0))];
}

CorrectionData CorrectionFor(benchmark::State& state) {
  const PanelSize panel = PanelOf(state);
  state.SetLabel(std::to_string(panel.Width) + "x" + std::to_string(panel.Height) +
                 ", interpolation " + std::to_string(state.range(1)));
  return TestCorrection(static_cast<std::int16_t>(state.range(1)));
}

void EveryPanelAndCurve(benchmark::internal::Benchmark* benchmark) {
  benchmark->ArgsProduct({{0, 1}, {kStraightLine, kQuadratic, kCubic, kQuartic, kBSpline}});
  benchmark->Unit(benchmark::kMicrosecond);
}

void EveryPanel(benchmark::internal::Benchmark* benchmark) {
  benchmark->ArgsProduct({{0, 1}, {kBSpline}});
  benchmark->Unit(benchmark::kMicrosecond);
}

void Sample(benchmark::State& state) {
  const CorrectionData correction = CorrectionFor(state);
  const int lines = LineCount(PanelOf(state), kVertical);
  for (auto step : state) {
    benchmark::DoNotOptimize(SampleCurve(correction.Curves[kVertical], lines));
  }
}
BENCHMARK(Sample)->Apply(EveryPanelAndCurve);

void Profile(benchmark::State& state) {
  const CorrectionData correction = CorrectionFor(state);
  const PanelSize panel = PanelOf(state);
  const std::vector<double> samples =
      SampleCurve(correction.Curves[kVertical], LineCount(panel, kVertical));
  for (auto step : state) {
    benchmark::DoNotOptimize(
        LineSizeProfile(correction.Axes[kVertical], 0, samples, LineLength(panel, kVertical)));
  }
}
BENCHMARK(Profile)->Apply(EveryPanel);

// Both axes, from the parameters to the texts: at most 60 microseconds at 1024x768.
void Registers(benchmark::State& state) {
  const CorrectionData correction = CorrectionFor(state);
  const PanelSize panel = PanelOf(state);
  for (auto step : state) benchmark::DoNotOptimize(BuildRegisters(correction, panel));
}
BENCHMARK(Registers)->Apply(EveryPanelAndCurve);

// Both axes, as every slider's move asks for it: well below a millisecond.
void FindDeviation(benchmark::State& state) {
  const CorrectionData correction = CorrectionFor(state);
  const PanelSize panel = PanelOf(state);
  for (auto step : state) benchmark::DoNotOptimize(DeviationOf(correction, panel));
}
BENCHMARK(FindDeviation)->Apply(EveryPanelAndCurve);

// All frames that Apply sends.
void Frames(benchmark::State& state) {
  const RegisterSet registers = BuildRegisters(CorrectionFor(state), PanelOf(state));
  for (auto step : state) {
    for (const CommandNumber number : kApplyCommands) {
      benchmark::DoNotOptimize(FrameOf(*ComposeCommandText(number, registers, 0)));
    }
  }
}
BENCHMARK(Frames)->Apply(EveryPanel);

// The text of a file without the disk: what Write makes is what Parse reads.
class Format {
 public:
  explicit Format(std::string_view type, const CorrectionData& correction, PanelSize panel)
      : messages_(global_, display_), module_(MakeFormatModule(type, data_, messages_)) {
    data_.Correction = correction;
    data_.Registers = BuildRegisters(correction, panel);
  }

  std::string Write() const {
    std::vector<std::string> lines;
    module_->Write(lines);
    return JoinLines(lines);
  }

  bool Parse(std::string_view text) {
    module_->ResetRead();
    return !ReadLines(text, *module_).has_value();
  }

 private:
  class NoDisplay : public MessageDisplay {
   public:
    std::size_t Show(const UserMessage&) override { return 0; }
  };

  LSSglobal global_;
  NoDisplay display_;
  Messages messages_;
  FileData data_;
  std::unique_ptr<FormatModule> module_;
};

void Write(benchmark::State& state, std::string_view type) {
  const Format format(type, CorrectionFor(state), PanelOf(state));
  for (auto step : state) benchmark::DoNotOptimize(format.Write());
}
BENCHMARK_CAPTURE(Write, wlt, kTypeWlt)->Apply(EveryPanel);
BENCHMARK_CAPTURE(Write, wlr, kTypeWlr)->Apply(EveryPanel);

void Parse(benchmark::State& state, std::string_view type) {
  Format format(type, CorrectionFor(state), PanelOf(state));
  const std::string text = format.Write();
  for (auto step : state) {
    if (!format.Parse(text)) state.SkipWithError("the file was refused");
  }
}
BENCHMARK_CAPTURE(Parse, wlt, kTypeWlt)->Apply(EveryPanel);
BENCHMARK_CAPTURE(Parse, wlr, kTypeWlr)->Apply(EveryPanel);

}  // namespace
}  // namespace warpline
