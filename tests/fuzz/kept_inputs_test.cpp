#include <gtest/gtest.h>

#include "fuzz/targets.h"
#include "tests/support/source_folder.h"
#include "tests/support/temp_folder.h"

namespace warpline {
namespace {

TEST(Fuzz, KeptInputsDoNoHarm) {
  for (const FuzzTarget& target : FuzzTargets()) {
    std::size_t count = 0;
    for (const auto& file :
         std::filesystem::directory_iterator(SourceFolder() / "fuzz/corpus" / target.name)) {
      EXPECT_EQ(target.feed(TempFolder::Read(file.path())), "") << file.path();
      ++count;
    }
    EXPECT_GT(count, 1U) << target.name;
  }
}

}  // namespace
}  // namespace warpline
