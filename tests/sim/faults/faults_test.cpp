#include "sim/faults/faults.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>

#include "tests/support/sim_hex.h"

namespace warpline::sim {
namespace {

constexpr const char* kStadium = "01DF0000051000010001F7";
constexpr const char* kBlock = "01FC000000FD";

TEST(FaultRules, RefuseWhatMakesNoSense) {
  const std::tuple<const char*, const char*> cases[] = {{"", "begin with nth"},
                                                        {"nth=0:timeout", "from 1 on"},
                                                        {"nth=-1:cut", "from 1 on"},
                                                        {"nth=99999999999:cut", "from 1 on"},
                                                        {"kind=13:cut", "needs any"},
                                                        {"kind=22:cut", "needs any"},
                                                        {"kind=Any:cut", "needs any"},
                                                        {"nth=1", "must be timeout"},
                                                        {"nth=1:late", "must be timeout"},
                                                        {"nth=1:late=-5", "milliseconds"},
                                                        {"nth=1:late=600001", "milliseconds"},
                                                        {"nth=1:late=5~", "milliseconds"},
                                                        {"nth=1,:cut", "begin with nth"},
                                                        {"every=0:cut", "from 1 on"},
                                                        {"chance=0:cut", "above 0"},
                                                        {"chance=1.5:cut", "above 0"},
                                                        {"chance=nan:cut", "above 0"},
                                                        {"kind=20:halfopen", "no kind="}};
  for (const auto& [text, part] : cases) {
    std::string reason;
    EXPECT_EQ(ParseFaultRule(text, reason), std::nullopt) << text;
    EXPECT_NE(reason.find(part), std::string::npos) << reason;
    EXPECT_NE(reason.find(text), std::string::npos) << reason;
  }
}

TEST(FaultRules, StrikeWhatTheyName) {
  const std::tuple<const char*, std::vector<const char*>, std::vector<const char*>> cases[] = {
      {"kind=any", {kProbe, kClear, kRunning, "01DF"}, {}},
      {"kind=probe", {kProbe}, {kClear, kClass}},
      {"kind=class", {kClass}, {kProbe}},
      {"kind=running", {kRunning}, {kInput7, kProbe}},
      {"kind=input", {kInput7}, {kRunning}},
      {"kind=0", {kClear}, {kProbe, kMode0, kStore}},
      {"kind=16", {kStadium}, {kClear}},
      {"kind=18", {kMode0, kMode1}, {kClear}},
      {"kind=19", {kMode1}, {kMode0}},
      {"kind=mode", {kMode0, kMode1}, {kProbe}},
      {"kind=20", {kPrepare}, {kClear}},
      {"kind=prepare", {kPrepare}, {kClear}},
      {"kind=21", {kStore, kBlock}, {kClear}},
      {"kind=block", {kBlock}, {kStore}},
      {"nth=7", {kProbe, kRunning}, {}}};
  for (const auto& [when, struck, spared] : cases) {
    std::string reason;
    const auto rule = ParseFaultRule(when + std::string(":cut"), reason);
    ASSERT_TRUE(rule) << reason;
    for (const char* frame : struck) {
      EXPECT_TRUE(Matches(*rule, 7, FromHex(frame))) << when << " " << frame;
    }
    for (const char* frame : spared) {
      EXPECT_FALSE(Matches(*rule, 7, FromHex(frame))) << when << " " << frame;
    }
    if (rule->Nth) {
      EXPECT_FALSE(Matches(*rule, 8, FromHex(kProbe)));
    }
  }
}

TEST(FaultRules, SpoilTheReply) {
  const std::tuple<const char*, bool, const char*, int, bool, bool> cases[] = {
      {"timeout", false, "", 0, false, false},
      {"refuse", false, "21DF0000010203", 0, false, false},
      {"unkept", true, "21DF0000010203", 0, false, false},
      {"duplicate", true, "21DF000001020321DF0000010203", 0, false, false},
      {"restart", false, "", 0, false, true},
      {"short", true, "21DF000001", 0, false, false},
      {"long", true, "21DF000001020300FF", 0, false, false},
      {"checksum", true, "21DF0000010256", 0, false, false},
      {"late=250", true, "21DF0000010203", 250, false, false},
      {"slow", true, "21DF0000010203", 0, true, false},
      {"cut", false, "", 0, false, true},
      {"cutmid", true, "21DF00", 0, false, true}};
  for (const auto& [what, executed, reply, delay, byte_by_byte, cut] : cases) {
    SCOPED_TRACE(what);
    std::string reason;
    const auto rule = ParseFaultRule("nth=1:" + std::string(what), reason);
    ASSERT_TRUE(rule) << reason;
    EXPECT_EQ(IsExecuted(rule->Effect), executed);
    const Outgoing outgoing = Spoil(*rule, FromHex("21DF0000010203"));
    EXPECT_EQ(ToHex(outgoing.Reply), reply);
    EXPECT_EQ(outgoing.Delay.count(), delay);
    EXPECT_EQ(outgoing.ByteByByte, byte_by_byte);
    EXPECT_EQ(outgoing.CutAfter, cut);
  }
}

}  // namespace
}  // namespace warpline::sim
