#include "sim/station.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "tests/sim/hex.h"
#include "tests/support/projector_server.h"
#include "tests/support/temp_folder.h"

namespace warpline::sim {
namespace {

constexpr const char* kRunning = "7F5700000101D8";
constexpr const char* kWriteScroll = "01DF00000608000200334467";
constexpr const char* kShow = "01DF0000020100E3";
constexpr const char* kStore = "01DF0000021200F4";
constexpr const char* kMode1 = "01DE0000020100E2";

// A station with a small panel whose files lie in a folder, and what it said.
struct World {
  StationSetup Setup(std::vector<std::string> faults = {}) {
    StationSetup setup;
    setup.Projector.Panel = {8, 6};
    setup.Faults = FaultRules(faults);
    setup.State = folder / "state.json";
    setup.Picture = folder / "picture.png";
    setup.Log = [this](const std::string& text) { log.push_back(text); };
    return setup;
  }
  nlohmann::json State() const {
    return nlohmann::json::parse(TempFolder::Read(folder / "state.json"));
  }

  TempFolder folder;
  std::vector<std::string> log;
};

std::string Send(Station& station, int link, std::string_view hex) {
  return ToHex(station.Exchange(link, FromHex(hex)).Reply);
}

TEST(Station, ShowsItsStateAfterEachExchange) {
  World world;
  Station station(world.Setup({"kind=probe:late=5"}));
  const int link = station.OpenLink();
  Send(station, link, kRunning);
  Send(station, link, kWriteScroll);
  Send(station, link, kMode1);
  Send(station, link, "01DF0000020100E4");
  const nlohmann::json state = world.State();
  EXPECT_EQ(state["panel"], nlohmann::json({{"width", 8}, {"height", 6}}));
  EXPECT_EQ(state["class"], 5);
  EXPECT_EQ(state["power"], "on");
  EXPECT_EQ(state["mode"], 0);
  EXPECT_EQ(state["wished_mode"], 1);
  EXPECT_EQ(state["working"]["h_scroll"], "0000") << "not yet shown";
  EXPECT_EQ(state["session"], nlohmann::json({{"frames", 3}, {"bytes", 12 + 8 + 8}}));
  EXPECT_EQ(state["counters"]["exchanges"], 4);
  EXPECT_EQ(state["counters"]["refused"], 1);
  EXPECT_EQ(state["faults"], nlohmann::json({"kind=probe:late=5"}));

  Send(station, link, kShow);
  EXPECT_EQ(world.State()["working"]["h_scroll"], "3344");
  station.CloseLink(link);
  EXPECT_EQ(world.State()["wished_mode"], nullptr);
  EXPECT_EQ(world.State()["session"]["frames"], 4) << "kept until the next link";
  const int next = station.OpenLink();
  Send(station, next, kRunning);
  EXPECT_EQ(world.State()["session"]["frames"], 0);
  EXPECT_EQ(world.State()["counters"]["links"], 2);
  EXPECT_EQ(world.log, std::vector<std::string>());
}

TEST(Station, RebuildsTheLineScales) {
  World world;
  Station station(world.Setup());
  const int link = station.OpenLink();
  // 33024, then +5, then second differences -1, 1, 0, 2
  Send(station, link, "01DF000009040005000081051F20B7");
  Send(station, link, kShow);
  const std::vector<int> rows = world.State()["line_scales"]["horizontal"];
  EXPECT_EQ(rows, (std::vector<int>{33024, 33029, 33033, 33038, 33043, 33050}));
  const std::vector<int> columns = world.State()["line_scales"]["vertical"];
  EXPECT_EQ(columns, std::vector<int>(8, 32768));
}

TEST(Station, KeepsTheStoredSetOverARestart) {
  World world;
  {
    Station station(world.Setup());
    const int link = station.OpenLink();
    for (const char* frame : {kWriteScroll, kShow, kStore}) Send(station, link, frame);
    for (const char* frame : {"01DF0000020000E2", kShow}) Send(station, link, frame);
    EXPECT_EQ(station.Snapshot().Working[0][kScroll], "0000");
  }
  Station station(world.Setup());
  EXPECT_EQ(station.Snapshot().Working[kHorizontal][kScroll], "3344");
  EXPECT_EQ(station.Snapshot().Stored[kHorizontal][kScroll], "3344");
  EXPECT_EQ(world.log, std::vector<std::string>());
}

TEST(Station, SetsAStateFileAsideThatItCannotUse) {
  std::string other_panel;
  {
    World world;
    StationSetup setup = world.Setup();
    setup.Projector.Panel = {10, 6};
    const Station station(setup);
    other_panel = TempFolder::Read(world.folder / "state.json");
  }
  const struct {
    const char* name;
    std::string text;
  } cases[] = {
      {"empty", ""},
      {"no JSON", "[Warpline"},
      {"another object", "{\"panel\": {\"width\": 8, \"height\": 6}}"},
      {"another panel", other_panel},
      {"bad register", "{\"panel\":{\"width\":8,\"height\":6},\"stored\":{\"h_panel_ext\":7}}"},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.name);
    World world;
    world.folder.Write("state.json", row.text);
    const Station station(world.Setup());
    ASSERT_EQ(world.log.size(), 1u);
    EXPECT_NE(world.log[0].find("state.json.kept"), std::string::npos) << world.log[0];
    EXPECT_EQ(TempFolder::Read(world.folder / "state.json.kept"), row.text);
    EXPECT_EQ(world.State()["stored"]["h_corre_0"], "0080");
  }
}

TEST(Station, WritesThePictureBeforeItAnswers) {
  World world;
  Station station(world.Setup());
  const int link = station.OpenLink();
  const std::string flat = TempFolder::Read(world.folder / "picture.png");
  EXPECT_EQ(flat.substr(1, 3), "PNG");
  Send(station, link, "01DF000009040005000081051F20B7");
  EXPECT_EQ(TempFolder::Read(world.folder / "picture.png"), flat);
  Send(station, link, "01DF000009040005000090051F20C6");
  Send(station, link, kShow);
  EXPECT_NE(TempFolder::Read(world.folder / "picture.png"), flat);
}

TEST(Station, SaysWhichFileItCannotWrite) {
  World world;
  StationSetup setup = world.Setup();
  setup.State = world.folder / "nowhere/state.json";
  Station station(setup);
  ASSERT_EQ(world.log.size(), 1u);
  EXPECT_NE(world.log[0].find("nowhere"), std::string::npos);
  EXPECT_EQ(Send(station, station.OpenLink(), kShow), "21DF0000010001");
}

TEST(Station, FaultsStrikeBeforeOrAfterTheWork) {
  World world;
  Station station(world.Setup({"nth=2:timeout", "nth=3:short"}));
  const int link = station.OpenLink();
  Send(station, link, kWriteScroll);
  EXPECT_EQ(Send(station, link, kShow), "");
  EXPECT_EQ(station.Snapshot().Working[kHorizontal][kScroll], "0000");
  Send(station, link, "7F570000050578563412F4");
  EXPECT_EQ(Send(station, link, kShow), "21DF000001") << "the echo is not counted";
  EXPECT_EQ(station.Snapshot().Working[kHorizontal][kScroll], "3344");
}

}  // namespace
}  // namespace warpline::sim
