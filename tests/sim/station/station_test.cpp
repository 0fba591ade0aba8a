#include "sim/station/station.h"

#include <array>
#include <nlohmann/json.hpp>

#include "picture/photograph.h"
#include "sim/station/control.h"
#include "tests/support/projector_server.h"
#include "tests/support/sim_hex.h"
#include "tests/support/temp_folder.h"

namespace warpline::sim {
namespace {

using nlohmann::json;

// 33024, then +5, then second differences -1, 1, 0, 2
constexpr const char* kWriteRows = "01DF000009040005000081051F20B7";

// A station with a small panel whose files lie in a folder, and what it said.
struct StationWorld {
  StationSetup Setup(const std::vector<std::string>& faults = {}) {
    return {.Projector = {.Panel = {8, 6}},
            .Faults = FaultRules(faults),
            .State = folder / "state.json",
            .Picture = folder / "picture.png",
            .Log = [this](const NamedText& text) { log.push_back(Said(text)); }};
  }
  json State() const { return json::parse(TempFolder::Read(folder / "state.json")); }

  TempFolder folder;
  std::vector<std::string> log;
};

TEST(Station, ShowsItsStateAfterEachExchange) {
  StationWorld world;
  LinkedStation at(world.Setup({"kind=probe:late=5"}));
  for (const char* frame : {kRunning, kWriteScroll, kMode1, "01DF0000020100E4"}) at.Send(frame);
  json state = world.State();
  EXPECT_EQ(state["working"]["h_scroll"], "0000") << "not yet shown";
  for (const char* key : {"panel_reported", "reply5", "input", "working", "stored", "line_scales"})
    EXPECT_EQ(state.erase(key), 1u) << key;
  EXPECT_EQ(state, json::parse(R"({"panel": {"width": 8, "height": 6}, "class": 5, "power": "on",
      "mode": 0, "wished_mode": 1, "session": {"frames": 3, "bytes": 28},
      "counters": {"exchanges": 4, "refused": 1, "shows": 0, "stores": 0, "links": 1},
      "faults": ["kind=probe:late=5"]})"));

  at.Send(kShow);
  EXPECT_EQ(world.State()["working"]["h_scroll"], "3344");
  at.station.CloseLink(at.link);
  EXPECT_EQ(world.State()["wished_mode"], nullptr);
  EXPECT_EQ(world.State()["session"]["frames"], 4) << "kept until the next link";
  at.link = at.station.OpenLink();
  at.Send(kRunning);
  EXPECT_EQ(world.State()["session"]["frames"], 0);
  EXPECT_EQ(world.State()["counters"]["links"], 2);
  EXPECT_EQ(world.log, std::vector<std::string>());
}

TEST(Station, IsPhotographedAfterEachChange) {
  StationWorld world;
  StationSetup setup = world.Setup();
  setup.Projector.Panel = {64, 64};
  setup.Wall = Wall{};
  setup.Camera = Camera{.Photo = {320, 320}};
  setup.Photo = world.folder / "photo.jpg";
  setup.Source = RgbImage{64, 64, std::vector<std::uint8_t>(64 * 64 * 3, 255)};
  LinkedStation at(setup);
  const std::string before = TempFolder::Read(*setup.Photo);
  NamedText reason;
  const RgbImage photo = ImageOfPhotograph(before, reason).value_or(BlackImage({320, 320}));
  EXPECT_GT(*photo.At(160, 160), 200) << "the white picture that is sent";
  EXPECT_EQ(before.substr(0, 2), "\xFF\xD8");
  for (const char* frame : {kRunning, kWriteScroll, kShow}) at.Send(frame);
  EXPECT_EQ(TempFolder::Read(*setup.Photo), before) << "a reply does not wait for the photograph";
  at.station.WriteDuePhoto();
  EXPECT_NE(TempFolder::Read(*setup.Photo), before);
}

TEST(Station, RebuildsTheLineScalesAndDrawsThemBeforeItAnswers) {
  StationWorld world;
  LinkedStation at(world.Setup());
  const auto picture = [&] { return TempFolder::Read(world.folder / "picture.png"); };
  const std::string flat = picture();
  EXPECT_EQ(flat.substr(1, 3), "PNG");
  at.Send(kWriteRows);
  EXPECT_EQ(picture(), flat);
  at.Send(kShow);
  EXPECT_EQ(world.State()["line_scales"]["horizontal"],
            json({33024, 33029, 33033, 33038, 33043, 33050}));
  EXPECT_EQ(world.State()["line_scales"]["vertical"], json(std::vector<int>(8, 32768)));
  at.Send("01DF000009040005000090051F20C6");
  at.Send(kShow);
  EXPECT_NE(picture(), flat);
  StationSetup setup = world.Setup();
  setup.Wall.emplace();
  const Station on_wall(setup);
  EXPECT_NE(picture(), flat) << "bent";
}

TEST(Station, KeepsTheStoredSetOverARestart) {
  StationWorld world;
  {
    LinkedStation at(world.Setup());
    for (const char* frame : {kWriteScroll, kShow, kStore, kClear, kShow}) at.Send(frame);
    EXPECT_EQ(at.Scroll(), "0000");
  }
  LinkedStation at(world.Setup());
  EXPECT_EQ(at.Scroll(), "3344");
  EXPECT_EQ(at.station.Snapshot().Stored[kHorizontal][kScroll], "3344");
  EXPECT_EQ(world.log, std::vector<std::string>());
}

TEST(Station, SetsAStateFileAsideThatItCannotUse) {
  const auto written = [](PanelSize panel) {
    StationWorld world;
    StationSetup setup = world.Setup();
    setup.Projector.Panel = panel;
    const Station station(setup);
    return TempFolder::Read(world.folder / "state.json");
  };
  const std::string of_another_panel = written({10, 6});
  std::string short_register = written({8, 6});
  short_register.replace(short_register.rfind("0080"), 4, "80");
  for (const std::string& text :
       {std::string(), std::string("[Warpline"),
        std::string(R"({"panel": {"width": 8, "height": 6}})"),
        std::string(R"({"panel": {"width": 8, "height": 6.4e37}})"),
        std::string(R"({"panel":{"width":8,"height":6},"stored":{"h_panel_ext":7}})"),
        of_another_panel, short_register}) {
    SCOPED_TRACE(text);
    StationWorld world;
    world.folder.Write("state.json", text);
    const Station station(world.Setup());
    ASSERT_EQ(world.log.size(), 1u);
    EXPECT_NE(world.log[0].find("state.json.kept"), std::string::npos) << world.log[0];
    EXPECT_EQ(TempFolder::Read(world.folder / "state.json.kept"), text);
    EXPECT_EQ(world.State()["stored"]["h_corre_0"], "0080");
  }
}

TEST(Station, SaysWhichFileItCannotWrite) {
  StationWorld world;
  StationSetup setup = world.Setup();
  setup.State = world.folder / "nowhere/state.json";
  LinkedStation at(setup);
  ASSERT_EQ(world.log.size(), 1u);
  EXPECT_NE(world.log[0].find("nowhere"), std::string::npos);
  EXPECT_EQ(at.Send(kShow), kAcceptedReply);
}

TEST(Station, HasANewRevisionWithEveryChange) {
  Station station({.Faults = FaultRules({"once:refuselink"})});
  const std::function<void()> changes[] = {[&] { station.Receive(); },
                                           [&] { station.OpenLink(); },
                                           [&] { station.Exchange(0, FromHex(kProbe)); },
                                           [&] { station.CloseLink(0); },
                                           [&] { station.SetFaults(FaultRules({"once:cut"})); },
                                           [&] { station.RemoveFault("once:cut"); },
                                           [&] { station.SetSeed(5); },
                                           [&] { station.SetSpeedUp(3); },
                                           [&] { station.TurnPower(false); },
                                           [&] { station.Restart(); }};
  for (const auto& change : changes) {
    const std::uint64_t revision = station.Revision();
    change();
    EXPECT_NE(station.Revision(), revision) << &change - changes;
  }
  const int link = station.OpenLink();
  for (int i = 0; i < 210; ++i) station.Exchange(link, FromHex(kRunning));
  EXPECT_EQ(station.Snapshot().Exchanges.size(), kKeptExchanges);
  EXPECT_EQ(station.Snapshot().Exchanges.back().Number, 211u);
}

TEST(Station, FaultsStrikeBeforeOrAfterTheWork) {
  const std::tuple<const char*, const char*, const char*, std::uint64_t> cases[] = {
      {"nth=2:timeout", "", "0000", 0},
      {"nth=2:unkept", kAcceptedReply, "0000", 0},
      {"kind=8:unkept", kAcceptedReply, "0000", 1},
      {"nth=2:cutmid", "21DF00", "3344", 1}};
  for (const auto& [fault, reply, scroll, shows] : cases) {
    SCOPED_TRACE(fault);
    LinkedStation at({.Faults = FaultRules({fault})});
    at.Send(kWriteScroll);
    at.Send("7F570000050578563412F4");  // an echo, which is not counted
    EXPECT_EQ(at.Send(kShow), reply);
    EXPECT_EQ(at.Scroll(), scroll);
    EXPECT_EQ(at.station.Snapshot().Count.Shows, shows);
    EXPECT_EQ(at.station.Snapshot().Count.Exchanges, 2u);
    EXPECT_EQ(at.station.Snapshot().Count.Refused, 0u) << "silence is no refusal";
  }
}

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
  EXPECT_EQ(at.Send(kShow), kAcceptedReply);
  EXPECT_EQ(power_after("restart"), Power::kOn);
  EXPECT_EQ(at.Scroll(), "0000") << "only what was stored";
  at.link = at.station.OpenLink();
  EXPECT_EQ(power_after("power standby"), Power::kCoolingDown);
  EXPECT_EQ(at.Send(kShow), "21DF000002030005") << "cooling down it takes no command";
  EXPECT_EQ(at.Send(kRunning), "7F570000020003DB");
  now += kCoolDownMs;
  EXPECT_EQ(at.Send(kRunning), "7F570000020000D8");
  EXPECT_EQ(power_after("power on"), Power::kWarmingUp);
  EXPECT_EQ(at.Send(kRunning), "7F570000020002DA");
  EXPECT_EQ(power_after("speedup 10"), Power::kWarmingUp);
  now += kWarmUpMs / 10;
  EXPECT_EQ(power_after("clear"), Power::kOn);
  EXPECT_EQ(at.Send(kRunning), "7F570000020001D9");
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
  NamedText reason;
  ASSERT_TRUE(control.Listen({}, reason)) << Said(reason);
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
