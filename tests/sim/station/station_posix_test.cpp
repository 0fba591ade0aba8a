#include <gtest/gtest.h>

#include "sim/recording/recording.h"
#include "sim/station/station.h"
#include "tests/support/said.h"
#include "tests/support/temp_folder.h"

namespace warpline::sim {
namespace {

namespace fs = std::filesystem;

using Write = std::string (*)(const fs::path&);  // returns what was said of a failure

std::string SaidByStation(StationSetup setup) {
  std::string said;
  setup.Log = [&said](const NamedText& text) { said += Said(text); };
  const Station station(std::move(setup));
  return said;
}

TEST(SimulatorFiles, AreNotWrittenThroughALink) {
  const std::pair<const char*, Write> files[] = {
      {"record", [](const fs::path& path) { return OpenRecord(path) ? "" : path.string(); }},
      {"state", [](const fs::path& path) { return SaidByStation({.State = path}); }},
      {"picture", [](const fs::path& path) { return SaidByStation({.Picture = path}); }}};
  for (const auto& [name, write] : files) {
    SCOPED_TRACE(name);
    const TempFolder folder;
    EXPECT_EQ(write(folder / name), "") << "a new file";
    EXPECT_EQ(write(folder / name), "") << "the old one's place";
    const fs::path link = folder / "link";
    for (const fs::path& target : {folder.Write("theirs", "kept"), folder / "missing"}) {
      fs::create_symlink(target, link);
      EXPECT_NE(write(link).find(link.string()), std::string::npos);
      fs::remove(link);
    }
    EXPECT_EQ(TempFolder::Read(folder / "theirs"), "kept");
    EXPECT_FALSE(fs::exists(folder / "missing"));
  }
}

}  // namespace
}  // namespace warpline::sim
