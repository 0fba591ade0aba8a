#include <benchmark/benchmark.h>
#include <wx/app.h>

// The benchmarks run inside the toolkit's own start.

namespace warpline {
namespace {

class BenchApplication : public wxApp {
 public:
  bool OnInit() override { return true; }
  int OnRun() override {
    benchmark::RunSpecifiedBenchmarks();
    return 0;
  }
};

}  // namespace
}  // namespace warpline

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  wxApp::SetInstance(new warpline::BenchApplication);
  return wxEntry(argc, argv);
}
