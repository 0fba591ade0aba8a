#include "sim/station/control.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <string>
#include <tuple>

#include "tests/support/projector_server.h"
#include "tests/support/sim_hex.h"

namespace warpline::sim {
namespace {

constexpr milliseconds kEnough{5000};

TEST(Control, AnswersEveryLine) {
  Station station(StationSetup{.Name = "Old one"});
  const std::tuple<const char*, const char*> steps[] = {
      {"faults", "ok\n"},
      {"fault kind=21:refuse", "ok\n"},
      {"fault chance=0.5:cut\r", "  seed: 1\nok\n"},
      {"faults", "  kind=21:refuse\n  chance=0.5:cut\nok\n"},
      {"fault kind=22:refuse",
       "error: The fault rule \"kind=22:refuse\" is wrong: kind= needs any, probe, class, running, "
       "panel, status, input, prepare, mode, block or a command number (0 to 12, 14, 16 to 21).\n"},
      {"clear kind=20:refuse", "error: no such rule is in force\n"},
      {"clear kind=21:refuse", "ok\n"},
      {"faults", "  chance=0.5:cut\nok\n"},
      {"seed 77", "ok\n"},
      {"fault late=1",
       "error: The fault rule \"late=1\" is wrong: it must begin with nth=N, "
       "kind=NAME, every=N, once, chance=P or always, and a colon behind.\n"},
      {"clear", "ok\n"},
      {"faults", "ok\n"},
      {"strikes", "ok\n"},
      {"seed x", "error: seed needs a whole number\n"},
      {"power off", "error: power needs on or standby\n"},
      {"speedup 0", "error: speedup needs a number from 1 to 1000\n"},
      {"restart now", "error: restart takes nothing behind it\n"},
      {"", "error: no such command; help lists them\n"},
      {"Clear", "error: no such command; help lists them\n"}};
  for (const auto& [line, answer] : steps) {
    EXPECT_EQ(ControlAnswer(station, line), answer) << line;
  }
  EXPECT_NE(ControlAnswer(station, "status").find("  power: on\n"), std::string::npos);
  EXPECT_NE(ControlAnswer(station, "status").find("  name: Old one\n"), std::string::npos);
  EXPECT_NE(ControlAnswer(station, "status").find("  seed: 77\n"), std::string::npos);
  EXPECT_NE(ControlAnswer(station, "help").find("  fault RULE\n"), std::string::npos);
}

// From on to cooling down, and from there, as soon as it is off, to warming up.
TEST(Control, ChangesTheProjector) {
  Clock::time_point now = Clock::now();
  LinkedStation at({.Now = [&now] { return now; }});
  const auto power_after = [&](const char* line) {
    EXPECT_EQ(ControlAnswer(at.station, line), "ok\n") << line;
    return at.station.Snapshot().Setup.PowerState;
  };
  at.Send(kWriteScroll);
  at.Send(kShow);
  EXPECT_EQ(power_after("restart"), Power::kOn);
  EXPECT_EQ(at.Scroll(), "0000");
  EXPECT_EQ(power_after("power standby"), Power::kCoolingDown);
  EXPECT_EQ(power_after("power on"), Power::kCoolingDown);
  now += kCoolDownMs;
  EXPECT_EQ(power_after("speedup 10"), Power::kWarmingUp);
  now += kWarmUpMs / 10;
  EXPECT_EQ(power_after("clear"), Power::kOn);
}

std::string Ask(Channel& channel, std::string_view line) {
  const Bytes bytes(line.begin(), line.end());
  EXPECT_EQ(channel.Write(bytes, kEnough), ChannelStatus::kOk);
  std::string answer;
  std::array<std::uint8_t, 512> buffer{};
  while (!answer.ends_with("ok\n")) {
    const ReadResult read = channel.Read(buffer, kEnough);
    if (read.Status != ChannelStatus::kOk) {
      return answer + (read.Status == ChannelStatus::kClosed ? "<closed>" : "<silent>");
    }
    answer.append(buffer.begin(), buffer.begin() + static_cast<std::ptrdiff_t>(read.Count));
  }
  return answer;
}

TEST(Control, WorksOverItsPort) {
  ProjectorServer server;
  ControlServer control(server.Station());
  std::string reason;
  ASSERT_TRUE(control.Listen({}, reason)) << reason;
  ConnectStatus status{};
  const auto first = ConnectTcp(control.Where(), kEnough, status);
  const auto second = ConnectTcp(control.Where(), kEnough, status);
  ASSERT_TRUE(first && second);
  EXPECT_EQ(Ask(*first, "fault once:timeout\n"), "ok\n");
  EXPECT_EQ(Ask(*second, "faults\n"), "  once:timeout\nok\n");
  server.Station().Exchange(server.Station().OpenLink(), FromHex(kProbe));
  EXPECT_EQ(Ask(*first, "faults\nstrikes\n").substr(0, 3), "ok\n");
  EXPECT_NE(Ask(*second, "strikes\n").find("  exchange 1: once:timeout\n"), std::string::npos);
  EXPECT_EQ(Ask(*second, std::string(2 * kMaxControlLine, 'x')), "<closed>");
}

}  // namespace
}  // namespace warpline::sim
