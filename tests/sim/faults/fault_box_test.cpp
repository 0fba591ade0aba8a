#include "sim/faults/fault_box.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "tests/support/projector_server.h"
#include "tests/support/sim_hex.h"

namespace warpline::sim {
namespace {

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
