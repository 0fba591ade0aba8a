#include "fit/marks.h"

#include <gtest/gtest.h>

#include "tests/support/said.h"

namespace warpline {
namespace {

TEST(Marks, ReadBackAsWritten) {
  const Marks marks{{0.02, 0.5, 1234.125, -7.5}, {1, 0, 0.1, 4000}};
  EXPECT_EQ(MarksText(marks), "u,v,x,y\n0.02,0.5,1234.125,-7.5\n1,0,0.1,4000\n");
  NamedText reason;
  EXPECT_EQ(MarksOf(MarksText(marks), reason), marks);
  EXPECT_EQ(
      MarksOf("\xEF\xBB\xBFu, v, x, y\r\n\r\n0.02, 0.5,1234.125 ,-7.5\r\n1,0,0.1,4e3", reason),
      marks);
}

TEST(Marks, TellTheLineThatIsWrong) {
  const std::pair<std::string, std::string> cases[] = {
      {"", "The first line must be \"u,v,x,y\"."},
      {"x,y,u,v\n", "The first line must be \"u,v,x,y\"."},
      {"u,v,x,y\n0,0,1,1\n0,0,1\n", "Line 3"},
      {"u,v,x,y\n0,0,1,1,1\n", "Line 2"},
      {"u,v,x,y\n1.1,0,1,1\n", "Line 2"},
      {"u,v,x,y\n0,nan,1,1\n", "Line 2"},
      {"u,v,x,y\n0,0,1e7,1\n", "Line 2"},
      {"u,v,x,y\n0,0,1x,1\n", "Line 2"},
  };
  for (const auto& [text, said] : cases) {
    NamedText reason;
    EXPECT_FALSE(MarksOf(text, reason)) << text;
    EXPECT_TRUE(SaidByTool(reason).starts_with(said)) << text;
  }
  NamedText reason;
  EXPECT_FALSE(MarksOf(MarksText(Marks(kMostMarks + 1)), reason));
  EXPECT_EQ(SaidByTool(reason), "More than 10000 marks are too many.");
}

}  // namespace
}  // namespace warpline
