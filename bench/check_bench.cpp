#include <benchmark/benchmark.h>

#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "cli/run_command_line.h"
#include "platform/files.h"
#include "tests/support/source_folder.h"

// `warpline check` over the example files, from the disk: at least 5,000 data files a second.

namespace warpline {
namespace {

void Check(benchmark::State& state) {
  std::vector<std::string> words{"check", "--language", "en"};
  const std::size_t first_file = words.size();
  const std::filesystem::path examples = SourceFolder() / "examples";
  for (const auto& entry : std::filesystem::directory_iterator(examples)) {
    if (entry.path().extension() == ".wlt") words.push_back(Utf8Of(entry.path()));
  }
  // Enough files that what is done once a run does not count.
  const std::vector<std::string> files(words.begin() + first_file, words.end());
  while (words.size() < 1000) words.insert(words.end(), files.begin(), files.end());
  const auto count = static_cast<std::int64_t>(words.size() - first_file);
  for (auto step : state) {
    std::ostringstream out;
    if (RunCommandLine(words, out, out) != 0) state.SkipWithError("a file was refused");
  }
  state.SetItemsProcessed(state.iterations() * count);
}
BENCHMARK(Check)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
}  // namespace warpline
