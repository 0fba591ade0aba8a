#include "app/hand_over.h"

#include <gtest/gtest.h>

#include <tuple>

#include "app/start_words.h"
#include "platform/files.h"
#include "tests/support/temp_folder.h"

namespace warpline {
namespace {

namespace fs = std::filesystem;

TEST(StartWords, FilesAreNoSwitches) {
  const TempFolder folder;
  const fs::path file = folder.Write("my & wall", "");
  const fs::path gone = fs::absolute("gone.WLR");
  const std::string place = Utf8Of(folder.Path());
  const std::tuple<std::vector<std::string>, fs::path, std::string> rows[] = {
      {{"/J", Utf8Of(file), Utf8Of(gone), "-e"}, file, "/J -e "},
      {{place, "/J.wlt", "-J.wlt", "a.wls"}, {}, place + " /J.wlt -J.wlt a.wls "},
      {{"gone.WLR", "/J"}, gone, "/J "},
      {{Utf8Of(gone)}, gone, ""}};
  for (const auto& [words, named, switches] : rows) {
    EXPECT_EQ(SortWords(words).file, named);
    EXPECT_EQ(SortWords(words).switches, switches);
  }
}

TEST(HandOver, IsTakenRefusedOrWithdrawn) {
  using Answer = HandOver::Answer;
  const TempFolder folder;
  const fs::path file = folder.Path() / PathOf("曲面 & wall.wlt");
  HandOver taken(folder / "requests", file);
  EXPECT_EQ(taken.Look(), Answer::kWaiting);
  EXPECT_EQ(NextRequest(folder / "requests", Requests::kTake), file);
  EXPECT_EQ(taken.Look(), Answer::kTaken);
  EXPECT_EQ(taken.Withdraw(), Answer::kTaken);
  {
    HandOver refused(folder / "requests", file);
    NextRequest(folder / "requests", Requests::kRefuse);
    EXPECT_EQ(refused.Look(), Answer::kRefused);
    const HandOver withdrawn(folder / "requests", file);
  }
  EXPECT_TRUE(fs::is_empty(folder / "requests"));
  EXPECT_EQ(HandOver(folder.Write("no folder", ""), file).Look(), Answer::kRefused);
}

}  // namespace
}  // namespace warpline
