#include "picture/camera.h"
#include "picture/marks_picture.h"
#include "picture/photograph.h"
#include "tests/cli/cli_run.h"

namespace warpline {
namespace {

using MarksVerb = FilesTest;

TEST_F(MarksVerb, WritesWhereThePhotographShowsTheMarks) {
  const Camera camera{.X = 1, .Photo = {1400, 1050}, .Filled = 0.7};
  const RgbImage photo = PhotographOf(MarksPicture({640, 480}), Wall{}, camera);
  const std::string file = Put("photo.heic", JpegOf(photo, 75).value());  // its content counts
  const CliResult done = RunCli({"marks", file, "-o", Name("marks.csv"), "--panel", "640x480"});
  EXPECT_EQ(done.exit_code, 0) << done;
  EXPECT_TRUE(done.err.starts_with("The picture fills ")) << done;
  const Words lines = LinesOf(TempFolder::Read(Name("marks.csv")));
  ASSERT_EQ(lines.size(), 64u);
  EXPECT_TRUE(lines[1].starts_with("0.02,0.02,")) << lines[1];
}

TEST_F(MarksVerb, SaysWhatIsWrong) {
  const std::string dark = Put("dark.png", PngOf(BlackImage({400, 400})).value());
  const std::pair<Words, const char*> cases[] = {
      {{Name("none.jpg")}, "none.jpg: "},
      {{dark}, "dark.png: The photograph is too dark."},
      {{Put("text.jpg", "hello")}, "text.jpg: This file is no photograph"},
  };
  for (const auto& [words, said] : cases) {
    const CliResult result = RunCli(Words{"marks"} + words + Words{"-o", Name("marks.csv")});
    EXPECT_EQ(result.exit_code, 1) << result;
    EXPECT_TRUE(Holds(result.err, said)) << result;
  }
  EXPECT_EQ(RunCli({"marks", dark}).exit_code, 2);
  EXPECT_EQ(TempFolder::Read(Name("marks.csv")), "");
}

}  // namespace
}  // namespace warpline
