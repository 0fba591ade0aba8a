#include "sim/device/profile.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>

namespace warpline::sim {
namespace {

TEST(Profile, KeepsWhatIsMissing) {
  std::string reason;
  const auto profile = ParseProfile(R"({"class": 4, "reply5": 13, "panel": "800x600"})", reason);
  ASSERT_TRUE(profile) << reason;
  EXPECT_EQ(profile->Projector.ModelClass, 4);
  EXPECT_EQ(profile->Projector.Reply5, 13);
  EXPECT_EQ(profile->Projector.Panel, (PanelSize{800, 600}));
  EXPECT_TRUE(profile->Projector.ReportsPanel);
  EXPECT_TRUE(profile->Projector.TakesCommands);
}

TEST(Profile, IsRefusedWithAReason) {
  const std::tuple<const char*, const char*> cases[] = {{"", "parse"},
                                                        {"[]", "object"},
                                                        {R"({"clas": 4})", "\"clas\""},
                                                        {R"({"class": 256})", "0 to 255"},
                                                        {R"({"class": "5"})", "0 to 255"},
                                                        {R"({"class": 4.5})", "0 to 255"},
                                                        {R"({"reply5": -1})", "0 to 255"},
                                                        {R"({"panel": "63x600"})", "1024x768"},
                                                        {R"({"panel": "800x600x2"})", "1024x768"},
                                                        {R"({"panel": 800})", "string"},
                                                        {R"({"takes_commands": 1})", "boolean"}};
  for (const auto& [text, part] : cases) {
    std::string reason;
    EXPECT_FALSE(ParseProfile(text, reason)) << text;
    EXPECT_NE(reason.find(part), std::string::npos) << text << ": " << reason;
  }
}

}  // namespace
}  // namespace warpline::sim
