#include <algorithm>
#include <nlohmann/json.hpp>

#include "tests/cli/cli_run.h"
#include "tests/support/environment.h"
#include "tests/support/projector_server.h"

namespace warpline {
namespace {

class ManyProjectorsTest : public FilesTest {
 protected:
  // As they ended, in the order of their names.
  static Words SortedLines(const CliResult& result) {
    Words lines = LinesOf(result.out);
    std::ranges::sort(lines);
    return lines;
  }

  OwnSettings settings_{folder_.Path()};
  ProjectorServer left_, right_;
  const std::string bent_ = Put("bent file.wlt", kBentFile), flat_ = Put("flat.wlt", kFlatFile);
  const std::string list_ =
      Put("list.txt", "\xEF\xBB\xBF# NAME ADDRESS FILE\nleft " + left_.Place() +
                          "\r\n\r\n right\t" + right_.Place() + "  bent file.wlt \r\n");
};

TEST_F(ManyProjectorsTest, EachHasItsLineAndItsFile) {
  const Words words{"apply", flat_, "--projectors", list_, "--language", "en"};
  const CliResult good = RunProgram(words + Words{"--record", Name("run.txt")});
  EXPECT_EQ(good.exit_code, 0) << good;
  EXPECT_EQ(SortedLines(good), (Words{"left: ok", "right: ok"}));
  EXPECT_EQ(left_.Snapshot().Count.Shows + right_.Snapshot().Count.Shows, 2U);
  EXPECT_NE(left_.Snapshot().Working, right_.Snapshot().Working);
  for (const char* file : {"run-left.txt", "run-right.txt"}) {
    EXPECT_TRUE(Holds(TempFolder::Read(folder_ / file), "\treply\t")) << file;
  }
  const CliResult stored = RunProgram({"store", flat_, "--projectors", list_, "--language", "en"});
  ASSERT_EQ(LinesOf(stored.out).size(), 2U) << stored;
  EXPECT_TRUE(SortedLines(stored)[0].starts_with("left: ok; The projector keeps")) << stored;

  right_.SetFaults({"kind=17:refuse"});
  const CliResult failed = RunProgram(words);
  EXPECT_EQ(failed.exit_code, 1) << failed;
  EXPECT_EQ(
      SortedLines(failed),
      (Words{"left: ok", "right: The projector has failed in command execution.  Error : 2"}));

  const CliResult modes = RunProgram(
      {"mode", "--lan", left_.Place(), "--lan", right_.Place(), "--json", "--language", "ja"});
  EXPECT_EQ(modes.exit_code, 0) << modes;
  ASSERT_EQ(LinesOf(modes.out).size(), 2U) << modes;
  for (const std::string& line : LinesOf(modes.out)) {
    const auto json = nlohmann::json::parse(line);
    EXPECT_EQ(json["name"], json["target"]) << line;
    EXPECT_EQ(json["mode"], 1) << line << " as Store has asked for";
  }
}

TEST_F(ManyProjectorsTest, WrongListsContactNobody) {
  const std::string twice = Put("twice.txt", "a 127.0.0.1\nb 127.0.0.1:7142 bent file.wlt\n");
  const std::string alike = Put("alike.txt", "a/b 127.0.0.1\na:b 127.0.0.2\n");
  const std::string bad = Put("bad.txt", "a 127.0.0.1:0\n"), none = Put("none.txt", "# none\n");
  const std::tuple<Words, int, std::string> rows[] = {
      {{flat_, "--projectors", twice}, 1, twice + ":2: The projector \"127.0.0.1:7142\" is given"},
      {{flat_, "--projectors", bad}, 1, bad + ":1: The address \"127.0.0.1:0\" is not correct"},
      {{flat_, "--projectors", none}, 1, "No projector stands in \"" + none},
      {{flat_, "--projectors", Name("gone.txt")}, 1, Name("gone.txt") + ": "},
      {{"--projectors", list_}, 2, "warpline: FILE is missing."},
      {{"-", "--projectors", list_}, 2, "one projector only"},
      {{flat_, "--projectors", list_, "--lan", "127.0.0.1"}, 2, "Give only one"},
      {{flat_, "--lan", "127.0.0.1", "--lan", "127.0.0.1:7142"}, 2, "is given twice"},
      {{flat_, "--projectors", list_, "--record", "-"}, 2, "one thing only"},
      {{flat_, "--projectors", alike, "--record", Name("r.txt")}, 2, Name("r-a_b.txt")},
  };
  for (const auto& [words, exit_code, text] : rows) {
    const CliResult result = RunCli(Words{"apply"} + words);
    EXPECT_EQ(result.exit_code, exit_code) << text;
    EXPECT_TRUE(Holds(result.err, text)) << text << result;
  }
  EXPECT_EQ(left_.Snapshot().Links + right_.Snapshot().Links, 0U);
}

}  // namespace
}  // namespace warpline
