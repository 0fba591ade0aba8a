#include "fit/marks.h"
#include "tests/cli/cli_run.h"

namespace warpline {
namespace {

class FitVerb : public FilesTest {
 protected:
  // What a round wall does to the marks: columns are the taller the farther they are aside.
  Words Fit(const Words& words, double bend = 0.1) const {
    Marks marks;
    for (int i = 0; i < 63; ++i) {
      const double u = 0.02 + 0.12 * (i % 9);
      const double v = 0.02 + 0.16 * (i / 9);
      marks.push_back({u, v, 1000 + 2000 * u,
                       1500 + 1400 * (v - 0.5) * (1 + bend * (2 * u - 1) * (2 * u - 1))});
    }
    Put("marks.csv", MarksText(marks));
    return Words{"fit", Name("marks.csv"), "-o", Name("out.wlt")} + words;
  }
};

TEST_F(FitVerb, WritesTheBestCorrectionAndTellsItLast) {
  const CliResult all = RunCli(Fit({"--photo", "4000x3000"}));
  ASSERT_EQ(all.exit_code, 0) << all;
  ASSERT_EQ(LinesOf(all.out).size(), 6U) << all;
  EXPECT_TRUE(
      LinesOf(all.out).back().starts_with("Other Screens: edges 2.42 % (18.56 pixels) -> 0.0"))
      << all;
  EXPECT_TRUE(Holds(all.err, "The camera's lens is unknown.")) << all;
  EXPECT_EQ(RunCli({"check", Name("out.wlt")}).exit_code, 0);
  EXPECT_TRUE(Holds(TempFolder::Read(Name("out.wlt")), "ScreenType=5"))
      << TempFolder::Read(Name("out.wlt"));
  const CliResult one = RunCli(
      Fit({"--screen", "5", "--projection-v", "1", "--straight", "100,100", "2000,100", "3900,100",
           "--straight", "100,100", "100,1500", "100,2900", "--panel", "1280x800"}));
  ASSERT_EQ(LinesOf(one.out).size(), 1U) << one;
  EXPECT_TRUE(Holds(one.out, " ProjectionV=1 ")) << one;
  EXPECT_EQ(one.err, "");
}

TEST_F(FitVerb, SaysWhatIsWrong) {
  const Words straight{"--straight", "1,1", "2,1", "3,1"};
  for (const Words& words :
       {Words{"--corners", "1,1", "2,1", "2,2"}, Words{"--corners", "1,1", "2,1", "2,2", "1"},
        straight + Words{"--straight", "1,1", "2,1"}, Words{"--photo", "4000"},
        Words{"--photo", "0x3000"}, Words{"--screen", "6"}, Words{"--projection-h", "2"}}) {
    EXPECT_EQ(RunCli(Fit(words)).exit_code, 2) << words.back();
  }
  Fit({});
  Put("marks.csv", "u,v,x,y\n0.02,0.02,1\n");
  const CliResult bad = RunCli({"fit", Name("marks.csv"), "-o", Name("out.wlt")});
  EXPECT_EQ(bad.exit_code, 1);
  EXPECT_TRUE(Holds(bad.err, "marks.csv: Line 2")) << bad;
  EXPECT_EQ(RunCli({"fit", Name("none.csv"), "-o", Name("out.wlt")}).exit_code, 1);
}

}  // namespace
}  // namespace warpline
