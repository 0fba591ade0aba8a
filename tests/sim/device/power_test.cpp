#include "sim/device/power.h"

#include <gtest/gtest.h>

#include "sim/station/station.h"
#include "tests/support/sim_hex.h"

namespace warpline::sim {
namespace {

using std::chrono::seconds;

TEST(PowerSwitch, WarmsUpAndCoolsDown) {
  const Clock::time_point start = Clock::now();
  PowerSwitch power(Power::kStandby);
  power.Turn(true, start);
  EXPECT_EQ(power.At(start + seconds(29)), Power::kWarmingUp);
  EXPECT_EQ(power.Left(start + seconds(29)), milliseconds(1000));
  EXPECT_EQ(power.At(start + seconds(30)), Power::kOn);
  EXPECT_EQ(power.Left(start + seconds(30)), milliseconds(0));
  power.Turn(false, start + seconds(40));
  EXPECT_EQ(power.At(start + seconds(99)), Power::kCoolingDown);
  EXPECT_EQ(power.At(start + seconds(100)), Power::kStandby);
}

TEST(PowerSwitch, FinishesWhatItIsDoingBeforeItTurnsAround) {
  const Clock::time_point start = Clock::now();
  PowerSwitch power(Power::kOn);
  power.Turn(false, start);
  power.Turn(true, start + seconds(10));
  EXPECT_EQ(power.At(start + seconds(59)), Power::kCoolingDown);
  EXPECT_EQ(power.At(start + seconds(61)), Power::kWarmingUp);
  power.SetSpeedUp(10, start + seconds(70));
  EXPECT_EQ(power.Left(start + seconds(70)), milliseconds(2000)) << "faster from now on";
  EXPECT_EQ(power.At(start + seconds(71)), Power::kWarmingUp);
  EXPECT_EQ(power.At(start + seconds(72)), Power::kOn);
}

TEST(Station, FollowsItsPower) {
  Clock::time_point now = Clock::now();
  LinkedStation at({.Now = [&now] { return now; }});
  at.Send(kWriteScroll);
  EXPECT_EQ(at.Send(kShow), kAcceptedReply);
  at.station.TurnPower(false);
  EXPECT_EQ(at.Send(kShow), "21DF000002030005") << "cooling down it takes no command";
  EXPECT_EQ(at.Send(kRunning), "7F570000020003DB");
  now += kCoolDownMs;
  EXPECT_EQ(at.Send(kRunning), "7F570000020000D8");
  at.station.TurnPower(true);
  EXPECT_EQ(at.Send(kRunning), "7F570000020002DA");
  now += kWarmUpMs;
  EXPECT_EQ(at.Send(kRunning), "7F570000020001D9");
  EXPECT_EQ(at.Scroll(), "0000") << "only what was stored";
}

}  // namespace
}  // namespace warpline::sim
