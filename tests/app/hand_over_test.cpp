#include "app/hand_over.h"

#include <gtest/gtest.h>

#include <tuple>

#include "app/start_words.h"
#include "platform/files.h"
#include "tests/support/temp_folder.h"

namespace warpline {
namespace {

namespace fs = std::filesystem;
using Words = std::vector<std::string>;

TEST(StartWords, FilesAreNoSwitches) {
  const TempFolder folder;
  const fs::path file = folder.Write("my & wall", "");
  const fs::path gone = fs::absolute("gone.WLR");
  const std::tuple<Words, fs::path, std::string> rows[] = {
      {{"/J", Utf8Of(file), Utf8Of(gone), "-e"}, file, "/J -e "},
      {{Utf8Of(folder.Path()), "/J.wlt", "-J.wlt", "wall.wls"},
       {},
       Utf8Of(folder.Path()) + " /J.wlt -J.wlt wall.wls "},
      {{"gone.WLR", "/J"}, gone, "/J "},
      {{Utf8Of(gone)}, gone, ""},
  };
  for (const auto& [words, named, switches] : rows) {
    const StartWords sorted = SortWords(words);
    EXPECT_EQ(sorted.file, named);
    EXPECT_EQ(sorted.switches, switches);
  }
}

TEST(HandOver, IsTakenRefusedOrWithdrawn) {
  using Answer = HandOver::Answer;
  const TempFolder folder;
  const fs::path requests = folder / "requests";
  const fs::path file = folder.Path() / PathOf("曲面 & wall.wlt");
  EXPECT_EQ(NextRequest(requests, Requests::kTake), std::nullopt) << "no such folder yet";
  {
    HandOver taken(requests, file);
    EXPECT_EQ(taken.Look(), Answer::kWaiting);
    EXPECT_EQ(NextRequest(requests, Requests::kTake), file);
    EXPECT_EQ(taken.Look(), Answer::kTaken);
    EXPECT_EQ(taken.Withdraw(), Answer::kTaken);
    HandOver refused(requests, file), also(requests, file);
    EXPECT_EQ(NextRequest(requests, Requests::kRefuse), std::nullopt);
    EXPECT_EQ(refused.Look(), Answer::kRefused);
    EXPECT_EQ(also.Withdraw(), Answer::kRefused);
    HandOver left(requests, file);
  }
  EXPECT_EQ(NextRequest(requests, Requests::kTake), std::nullopt) << "all are withdrawn";
  EXPECT_TRUE(fs::is_empty(requests));
  HandOver impossible(folder.Write("no folder", ""), file);
  EXPECT_EQ(impossible.Look(), Answer::kRefused);
}

}  // namespace
}  // namespace warpline
