#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/files/file_fixture.h"

// The shipped corrections, as the tool reads them.

namespace warpline::sim {

struct Example {
  std::string Name;
  CorrectionData Correction;
};

inline std::vector<Example> Examples() {
  std::vector<Example> examples;
  for (const auto& entry : std::filesystem::directory_iterator(SourceFolder() / "examples")) {
    if (entry.path().extension() != ".wlt") continue;
    FileWorld world;
    EXPECT_EQ(world.Read("wlt", TempFolder::Read(entry.path())), std::nullopt) << entry.path();
    examples.push_back({entry.path().filename().string(), world.file.Staging()});
  }
  return examples;
}

}  // namespace warpline::sim
