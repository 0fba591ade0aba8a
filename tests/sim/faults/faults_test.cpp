#include "sim/faults/faults.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "sim/faults/fault_box.h"
#include "tests/support/projector_server.h"
#include "tests/support/sim_hex.h"

namespace warpline::sim {
namespace {

constexpr const char* kStadium = "01DF0000051000010001F7";
constexpr const char* kBlock = "01FC000000FD";

TEST(FaultRules, RefuseWhatMakesNoSense) {
  const std::pair<const char*, std::vector<const char*>> cases[] = {
      {"begin with nth", {"", "nth=1,:cut"}},
      {"from 1 on", {"nth=0:timeout", "nth=-1:cut", "nth=99999999999:cut", "every=0:cut"}},
      {"needs any", {"kind=13:cut", "kind=22:cut", "kind=Any:cut"}},
      {"must be timeout", {"nth=1", "nth=1:late"}},
      {"milliseconds", {"nth=1:late=-5", "nth=1:late=600001", "nth=1:late=5~"}},
      {"above 0", {"chance=0:cut", "chance=1.5:cut", "chance=nan:cut"}},
      {"no kind=", {"kind=20:halfopen"}}};
  for (const auto& [part, texts] : cases) {
    for (const char* text : texts) {
      NamedText reason;
      EXPECT_EQ(ParseFaultRule(text, reason), std::nullopt) << text;
      const std::string said = Said(reason);
      EXPECT_NE(said.find(part), std::string::npos) << said;
      EXPECT_NE(said.find(text), std::string::npos) << said;
    }
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
    NamedText reason;
    const auto rule = ParseFaultRule(when + std::string(":cut"), reason);
    ASSERT_TRUE(rule) << Said(reason);
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
    NamedText reason;
    const auto rule = ParseFaultRule("nth=1:" + std::string(what), reason);
    ASSERT_TRUE(rule) << Said(reason);
    EXPECT_EQ(IsExecuted(rule->Effect), executed);
    const Outgoing outgoing = Spoil(*rule, FromHex("21DF0000010203"));
    EXPECT_EQ(ToHex(outgoing.Reply), reply);
    EXPECT_EQ(outgoing.Delay.count(), delay);
    EXPECT_EQ(outgoing.ByteByByte, byte_by_byte);
    EXPECT_EQ(outgoing.CutAfter, cut);
  }
}

// The exchanges, of as many, that the rules strike: "x" struck, "." spared; every second exchange
// is a store.
std::string Struck(FaultBox& box, int count) {
  std::string marks;
  for (int i = 1; i <= count; ++i) {
    const Bytes frame = FromHex(i % 2 == 0 ? kStore : kProbe);
    marks += box.StrikeExchange(static_cast<std::uint64_t>(i), frame) ? "x" : ".";
  }
  return marks;
}

TEST(FaultBox, StrikesAsOftenAsTheRuleSays) {
  const std::tuple<const char*, const char*, std::size_t> cases[] = {
      {"always", "xxxxxxxx", 1},       {"nth=3", "..x.....", 0},
      {"once", "x.......", 0},         {"once,kind=21", ".x......", 0},
      {"every=3", "..x..x..", 1},      {"kind=21,every=2", "...x...x", 1},
      {"every=3,once", "..x.....", 0}, {"nth=3,kind=21", "........", 0},
      {"kind=21", ".x.x.x.x", 1},      {"chance=1", "xxxxxxxx", 1}};
  for (const auto& [when, struck, left] : cases) {
    FaultBox box(FaultRules({when + std::string(":timeout")}), 1);
    EXPECT_EQ(Struck(box, 8), struck) << when;
    EXPECT_EQ(box.Texts().size(), left) << when;
  }
}

TEST(FaultBox, DrawsTheSameForTheSameSeedAndKeepsTheLastStrikes) {
  const auto drawn = [](std::uint64_t seed) {
    FaultBox box(FaultRules({"chance=0.3:cut"}), seed);
    return Struck(box, 200);
  };
  EXPECT_EQ(drawn(5), drawn(5));
  EXPECT_NE(drawn(5), drawn(6));
  FaultBox box(FaultRules({"always:cut"}), 1);
  EXPECT_EQ(Struck(box, 66), std::string(66, 'x'));
  EXPECT_EQ(box.Strikes().size(), kKeptStrikes);
  EXPECT_EQ(box.Strikes().back(), "exchange 66: always:cut");
  const std::string marks = drawn(5);
  const auto count = std::count(marks.begin(), marks.end(), 'x');
  EXPECT_GT(count, 35);
  EXPECT_LT(count, 85);
}

TEST(FaultBox, KeepsJitterWithinItsBounds) {
  FaultBox box(FaultRules({"always:late=100~150"}), 9);
  std::set<milliseconds> delays;
  for (std::uint64_t i = 1; i <= 300; ++i) {
    delays.insert(box.StrikeExchange(i, FromHex(kProbe)).value().Delay);
  }
  EXPECT_EQ(delays.begin()->count(), 0);
  EXPECT_GT(delays.rbegin()->count(), 200);
  EXPECT_LE(delays.rbegin()->count(), 250);
}

TEST(FaultBox, KeepsLinksAndExchangesApart) {
  FaultBox box(FaultRules({"nth=2:halfopen", "always:single", "once:cut"}), 1);
  EXPECT_FALSE(box.StrikeLink(1, false));
  EXPECT_EQ(box.StrikeLink(2, true).value().Effect, FaultEffect::kHalfOpen);
  EXPECT_EQ(box.StrikeLink(3, true).value().Effect, FaultEffect::kSingle);
  EXPECT_FALSE(box.StrikeLink(4, false));
  EXPECT_FALSE(box.RefusesEveryLink());
  EXPECT_EQ(box.StrikeExchange(1, FromHex(kProbe)).value().Effect, FaultEffect::kCut);
  EXPECT_EQ(box.Strikes(),
            (std::vector<std::string>{"connection 2: nth=2:halfopen", "connection 3: always:single",
                                      "exchange 1: once:cut"}));
  box.Replace(FaultRules({"once:refuselink"}));
  EXPECT_FALSE(box.RefusesEveryLink()) << "only one is";
  box.Add(FaultRules({"always:refuselink"})[0]);
  EXPECT_TRUE(box.RefusesEveryLink());
  EXPECT_TRUE(box.Remove("always:refuselink"));
  EXPECT_FALSE(box.Remove("always:refuselink"));
  EXPECT_FALSE(box.RefusesEveryLink());
}

}  // namespace
}  // namespace warpline::sim
