#include "platform/files.h"
#include "tests/cli/cli_run.h"

namespace warpline {
namespace {

using PreviewVerbTest = FilesTest;

TEST_F(PreviewVerbTest, DrawsBandsAndAuxiliaryLines) {
  const std::string file = Put("bent.wlt", kBentFile), picture = Name("bent.svg");
  const CliResult plain = RunCli({"preview", file, "-o", picture});
  ASSERT_EQ(plain.exit_code, 0) << plain;
  EXPECT_EQ(plain.out + plain.err, "");
  std::string svg = TempFolder::Read(picture);
  EXPECT_TRUE(Holds(svg, "points=\"48,0 "));  // 12 % of the width, half on each side
  EXPECT_FALSE(Holds(svg, "stroke=\"#ffffff\""));

  ASSERT_EQ(RunCli({"preview", file, "-o", picture, "--aux"}).exit_code, 0);
  svg = TempFolder::Read(picture);
  EXPECT_TRUE(Holds(svg, "points=\"48,0 "));
  EXPECT_TRUE(Holds(svg, "stroke=\"#ffffff\""));
}

TEST_F(PreviewVerbTest, SaysWhatIsWrong) {
  const std::string file = Put("bent.wlt", kBentFile), picture = Name("out.svg");
  const std::string cubic = Put("cubic.wlt", "[Warpline Tool Data File 3.0]\r\nCorreInterpH=3\r\n");
  const std::string read_only = Put("read_only.svg", "old");
  std::filesystem::permissions(read_only, std::filesystem::perms::owner_read);
  const std::string no_folder = SystemErrorText(ReplaceFileContents(folder_ / "none/out.svg", ""));
  const std::tuple<Words, int, std::string> cases[] = {
      {{file}, 2, "-o"},
      {{Name("none.wlt"), "-o", picture}, 1, "o such"},
      {{file, "-o", Name("none/out.svg")}, 1, Name("none/out.svg") + ": " + no_folder},
      {{file, "-o", read_only}, 1, "Failed writing file."},
      {{cubic, "-o", picture}, 1, "[3] Wrong value."},  // through two points
  };
  for (const auto& [arguments, exit_code, part_of_error] : cases) {
    const CliResult result = RunCli(Words{"preview"} + arguments);
    EXPECT_EQ(result.exit_code, exit_code) << result;
    EXPECT_TRUE(Holds(result.err, part_of_error)) << result;
    EXPECT_EQ(TempFolder::Read(picture), "");
  }
}

}  // namespace
}  // namespace warpline
