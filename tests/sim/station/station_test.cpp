#include "sim/station/station.h"

#include <gtest/gtest.h>

#include <functional>
#include <nlohmann/json.hpp>
#include <string>
#include <tuple>
#include <vector>

#include "tests/support/projector_server.h"
#include "tests/support/sim_hex.h"
#include "tests/support/temp_folder.h"

namespace warpline::sim {
namespace {

using nlohmann::json;

// 33024, then +5, then second differences -1, 1, 0, 2
constexpr const char* kWriteRows = "01DF000009040005000081051F20B7";

// A station with a small panel whose files lie in a folder, and what it said.
struct World {
  StationSetup Setup(const std::vector<std::string>& faults = {}) {
    return {.Projector = {.Panel = {8, 6}},
            .Faults = FaultRules(faults),
            .State = folder / "state.json",
            .Picture = folder / "picture.png",
            .Log = [this](const std::string& text) { log.push_back(text); }};
  }
  json State() const { return json::parse(TempFolder::Read(folder / "state.json")); }

  TempFolder folder;
  std::vector<std::string> log;
};

TEST(Station, ShowsItsStateAfterEachExchange) {
  World world;
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

TEST(Station, RebuildsTheLineScalesAndDrawsThemBeforeItAnswers) {
  World world;
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
}

TEST(Station, KeepsTheStoredSetOverARestart) {
  World world;
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
    World world;
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
    World world;
    world.folder.Write("state.json", text);
    const Station station(world.Setup());
    ASSERT_EQ(world.log.size(), 1u);
    EXPECT_NE(world.log[0].find("state.json.kept"), std::string::npos) << world.log[0];
    EXPECT_EQ(TempFolder::Read(world.folder / "state.json.kept"), text);
    EXPECT_EQ(world.State()["stored"]["h_corre_0"], "0080");
  }
}

TEST(Station, SaysWhichFileItCannotWrite) {
  World world;
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

}  // namespace
}  // namespace warpline::sim
