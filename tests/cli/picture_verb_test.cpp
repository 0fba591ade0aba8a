#include "picture/named_pictures.h"
#include "tests/cli/cli_run.h"

namespace warpline {
namespace {

using PictureVerbTest = FilesTest;

int GreenOf(const RgbImage& image, int x, int y) {
  return image.At(x, y)[1];
}

// Three places that tell each picture from the others: on a line of the grid, in a corner, on a
// circle and on a mark.
TEST_F(PictureVerbTest, WritesEachPictureInThePanelsSize) {
  const std::tuple<std::string, int, int, int> pictures[] = {
      {"card", 48, 48, 160},     {"grid", 255, 48, 48}, {"checkerboard", 0, 255, 255},
      {"circles", 149, 48, 210}, {"marks", 48, 48, 0},  {"white", 255, 255, 255},
  };
  for (const auto& [name, first, second, third] : pictures) {
    SCOPED_TRACE(name);
    const CliResult result = RunCli({"picture", name, "--panel", "800x602", "-o", Name("a.png")});
    ASSERT_EQ(result.exit_code, 0) << result;
    NamedText reason;
    const auto image = ImageOfPng(TempFolder::Read(Name("a.png")), reason);
    ASSERT_TRUE(image);
    EXPECT_EQ((PanelSize{image->Width, image->Height}), (PanelSize{800, 602}));
    EXPECT_EQ(GreenOf(*image, 32, 5), first);
    EXPECT_EQ(GreenOf(*image, 33, 33), second);
    EXPECT_EQ(GreenOf(*image, 500, 300), third);
  }
  EXPECT_EQ(RunCli({"picture", "white", "-o", Name("none/a.png")}).exit_code, 1);
  EXPECT_EQ(RunCli({"picture", "own", "-o", Name("b.png")}).exit_code, 2);
  const Words own{"picture", "own", "--panel", "400x400", "-o", Name("b.png"), "--image"};
  EXPECT_TRUE(Holds(RunCli(own + Words{Put("no.png", "no")}).err, "no photograph"));
  ASSERT_EQ(RunCli(own + Words{Name("a.png")}).exit_code, 0);
  NamedText reason;
  const auto image = ImageOfPng(TempFolder::Read(Name("b.png")), reason);
  ASSERT_TRUE(image);
  EXPECT_EQ(GreenOf(*image, 200, 48), 0) << "black around it";
  EXPECT_EQ(GreenOf(*image, 200, 50), 255) << "white";
}

}  // namespace
}  // namespace warpline
