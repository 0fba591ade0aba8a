#include "platform/files.h"
#include "tests/cli/cli_run.h"

namespace warpline {
namespace {

std::size_t CountOf(const std::string& text, const std::string& part) {
  std::size_t count = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
    ++count;
  }
  return count;
}

using PreviewVerbTest = FilesTest;

TEST_F(PreviewVerbTest, DrawsBandsAndAuxiliaryLines) {
  const std::string file = Put("bent.wlt", kBentFile), picture = Name("bent.svg");
  const CliResult plain = RunCli({"preview", file, "-o", picture});
  ASSERT_EQ(plain.exit_code, 0) << plain;
  EXPECT_EQ(plain.out + plain.err, "");
  std::string svg = TempFolder::Read(picture);
  EXPECT_EQ(CountOf(svg, "<polyline stroke=\"#ffff00\""), 4U);
  EXPECT_TRUE(Holds(svg, "points=\"48,0 "));  // 12 % of the width, half on each side
  EXPECT_EQ(CountOf(svg, "stroke=\"#ffffff\""), 0U);

  ASSERT_EQ(RunCli({"preview", file, "-o", picture, "--aux"}).exit_code, 0);
  svg = TempFolder::Read(picture);
  EXPECT_EQ(CountOf(svg, "<polyline"), 4U);
  EXPECT_EQ(CountOf(svg, "stroke=\"#ffffff\""), 8U);
}

TEST_F(PreviewVerbTest, SaysWhatIsWrong) {
  const std::string file = Put("bent.wlt", kBentFile), picture = Name("out.svg");
  const std::string cubic = Put("cubic.wlt", "[Warpline Tool Data File 3.0]\r\nCorreInterpH=3\r\n");
  const std::string no_folder = SystemErrorText(ReplaceFileContents(folder_ / "none/out.svg", ""));
  const struct {
    Words words;
    int exit_code;
    std::string error;  // part of what is said
  } cases[] = {
      {{file}, 2, "-o"},
      {{Name("none.wlt"), "-o", picture}, 1, "o such"},
      {{file, "-o", Name("none/out.svg")}, 1, Name("none/out.svg") + ": " + no_folder},
      {{cubic, "-o", picture}, 1, "[3] Wrong value."},  // through two points
  };
  for (const auto& row : cases) {
    Words words{"preview"};
    words.insert(words.end(), row.words.begin(), row.words.end());
    const CliResult result = RunCli(words);
    EXPECT_EQ(result.exit_code, row.exit_code) << result;
    EXPECT_TRUE(Holds(result.err, row.error)) << result;
    EXPECT_EQ(TempFolder::Read(picture), "");
  }
}

}  // namespace
}  // namespace warpline
