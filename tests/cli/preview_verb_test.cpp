#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/system.h"
#include "tests/cli/cli_run.h"
#include "tests/support/temp_folder.h"

namespace warpline {
namespace {

std::size_t CountOf(const std::string& text, const std::string& part) {
  std::size_t count = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
    ++count;
  }
  return count;
}

TEST(PreviewVerb, DrawsBandsAndAuxiliaryLines) {
  const TempFolder folder;
  const std::string file = folder.Write("bent.wlt", kBentFile).string();
  const std::string picture = (folder / "bent.svg").string();
  const CliResult plain = RunCli({"preview", file, "-o", picture});
  ASSERT_EQ(plain.exit_code, 0) << plain;
  EXPECT_EQ(plain.out + plain.err, "");
  std::string svg = TempFolder::Read(picture);
  EXPECT_EQ(CountOf(svg, "<polyline stroke=\"#ffff00\""), 4U);
  EXPECT_NE(svg.find("points=\"48,0 "), std::string::npos);  // 12 % of the width, half on each side
  EXPECT_EQ(CountOf(svg, "stroke=\"#ffffff\""), 0U);

  ASSERT_EQ(RunCli({"preview", file, "-o", picture, "--aux"}).exit_code, 0);
  svg = TempFolder::Read(picture);
  EXPECT_EQ(CountOf(svg, "<polyline"), 4U);
  EXPECT_EQ(CountOf(svg, "stroke=\"#ffffff\""), 8U);
}

TEST(PreviewVerb, SaysWhatIsWrong) {
  const TempFolder folder;
  const std::string file = folder.Write("bent.wlt", kBentFile).string();
  const std::string upright =
      folder.Write("upright.wlt", "[Warpline Tool Data File 3.0]\r\nCorreInterpH=3\r\n").string();
  const std::string picture = (folder / "out.svg").string();
  const struct {
    std::string name;
    std::vector<std::string> words;
    int exit_code;
    std::string error;  // part of what is said
  } cases[] = {
      {"no picture named", {"preview", file}, 2, "-o"},
      {"no correction", {"preview", (folder / "none.wlt").string(), "-o", picture}, 1, "o such"},
      {"folder is missing",
       {"preview", file, "-o", (folder / "none/out.svg").string()},
       1,
       SystemErrorText(ReplaceFileContents(folder / "none/out.svg", ""))},
      {"cubic through two points", {"preview", upright, "-o", picture}, 1, ""},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.name);
    const CliResult result = RunCli(row.words);
    EXPECT_EQ(result.exit_code, row.exit_code) << result;
    EXPECT_NE(result.err.find(row.error), std::string::npos) << result;
    EXPECT_NE(result.err, "");
    EXPECT_EQ(TempFolder::Read(picture), "");
  }
}

}  // namespace
}  // namespace warpline
