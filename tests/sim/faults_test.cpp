#include "sim/faults.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/sim/hex.h"

namespace warpline::sim {
namespace {

constexpr const char* kProbe = "01DF000000E0";
constexpr const char* kClear = "01DF0000020000E2";
constexpr const char* kStore = "01DF0000021200F4";
constexpr const char* kStadium = "01DF0000051000010001F7";
constexpr const char* kMode0 = "01DE0000020000E1";
constexpr const char* kMode1 = "01DE0000020100E2";
constexpr const char* kPrepare = "021A000002020121";
constexpr const char* kClass = "00850000010086";
constexpr const char* kRunning = "7F5700000101D8";
constexpr const char* kInput = "7F570000050407000000E6";
constexpr const char* kBlock = "01FC000000FD";

TEST(FaultRules, RefuseWhatMakesNoSense) {
  const struct {
    const char* text;
    const char* reason;
  } cases[] = {
      {"", "begin with nth"},
      {"timeout", "begin with nth"},
      {"nth=0:timeout", "from 1 on"},
      {"nth=:timeout", "from 1 on"},
      {"nth=-1:cut", "from 1 on"},
      {"nth=99999999999:cut", "from 1 on"},
      {"kind=:cut", "needs any"},
      {"kind=13:cut", "needs any"},
      {"kind=22:cut", "needs any"},
      {"kind=Any:cut", "needs any"},
      {"nth=1", "must be timeout"},
      {"nth=1:", "must be timeout"},
      {"nth=1:explode", "timeout"},
      {"nth=1:late", "must be timeout"},
      {"nth=1:late=", "milliseconds"},
      {"nth=1:late=-5", "milliseconds"},
      {"nth=1:late=600001", "milliseconds"},
      {"nth=1:late=5~", "milliseconds"},
      {"nth=1,:cut", "begin with nth"},
      {"every=0:cut", "from 1 on"},
      {"chance=0:cut", "above 0"},
      {"chance=1.5:cut", "above 0"},
      {"chance=nan:cut", "above 0"},
      {"kind=20:halfopen", "no kind="},
  };
  for (const auto& row : cases) {
    std::string reason;
    EXPECT_EQ(ParseFaultRule(row.text, reason), std::nullopt) << row.text;
    EXPECT_NE(reason.find(row.reason), std::string::npos) << reason;
    EXPECT_NE(reason.find(row.text), std::string::npos) << reason;
  }
}

TEST(FaultRules, StrikeWhatTheyName) {
  const struct {
    const char* when;
    std::vector<const char*> struck;
    std::vector<const char*> spared;
  } cases[] = {
      {"kind=any", {kProbe, kClear, kRunning, "01DF"}, {}},
      {"kind=probe", {kProbe}, {kClear, kClass}},
      {"kind=class", {kClass}, {kProbe}},
      {"kind=running", {kRunning}, {kInput, kProbe}},
      {"kind=input", {kInput}, {kRunning}},
      {"kind=0", {kClear}, {kProbe, kMode0, kStore}},
      {"kind=16", {kStadium}, {kClear}},
      {"kind=18", {kMode0, kMode1}, {kClear}},
      {"kind=19", {kMode1}, {kMode0}},
      {"kind=mode", {kMode0, kMode1}, {kProbe}},
      {"kind=20", {kPrepare}, {kClear}},
      {"kind=prepare", {kPrepare}, {kClear}},
      {"kind=21", {kStore, kBlock}, {kClear}},
      {"kind=block", {kBlock}, {kStore}},
      {"nth=7", {kProbe, kRunning}, {}},
  };
  for (const auto& row : cases) {
    std::string reason;
    const auto rule = ParseFaultRule(row.when + std::string(":cut"), reason);
    ASSERT_TRUE(rule) << reason;
    for (const char* frame : row.struck) {
      EXPECT_TRUE(Matches(*rule, 7, FromHex(frame))) << row.when << " " << frame;
    }
    for (const char* frame : row.spared) {
      EXPECT_FALSE(Matches(*rule, 7, FromHex(frame))) << row.when << " " << frame;
    }
    if (rule->Nth) {
      EXPECT_FALSE(Matches(*rule, 8, FromHex(kProbe)));
    }
  }
}

TEST(FaultRules, SpoilTheReply) {
  const struct {
    const char* what;
    bool executed;
    const char* reply;
    int delay;
    bool byte_by_byte;
    bool cut;
  } cases[] = {
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
      {"cutmid", true, "21DF00", 0, false, true},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.what);
    std::string reason;
    const auto rule = ParseFaultRule("nth=1:" + std::string(row.what), reason);
    ASSERT_TRUE(rule) << reason;
    EXPECT_EQ(IsExecuted(rule->Effect), row.executed);
    const Outgoing outgoing = Spoil(*rule, FromHex("21DF0000010203"));
    EXPECT_EQ(ToHex(outgoing.Reply), row.reply);
    EXPECT_EQ(outgoing.Delay.count(), row.delay);
    EXPECT_EQ(outgoing.ByteByByte, row.byte_by_byte);
    EXPECT_EQ(outgoing.CutAfter, row.cut);
  }
}

}  // namespace
}  // namespace warpline::sim
