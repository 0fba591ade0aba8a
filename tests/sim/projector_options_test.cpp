#include "sim/projector_options.h"

#include <gtest/gtest.h>

#include <sstream>
#include <tuple>

namespace warpline::sim {
namespace {

using Words = std::vector<std::string>;

TEST(ProjectorOptions, RefuseWrongUsage) {
  const std::tuple<Words, const char*> cases[] = {
      {{"--panel", "63x100"}, "64 to 4096"},
      {{"--panel", "1024"}, "64 to 4096"},
      {{"--panel", "1024x4097"}, "64 to 4096"},
      {{"--panel", "99999999999x1"}, "64 to 4096"},
      {{"--listen", "0.0.0.0:7142"}, "loopback"},
      {{"--listen", "127.0.0.1"}, "port"},
      {{"--listen", "127.0.0.1:70000"}, "port"},
      {{"--usb", "9"}, "--usb"},
      {{"--usb", "1", "--listen", "127.0.0.1:0"}, "--usb"},
      {{"--class", "-1"}, "--class"},
      {{"--power", "off"}, "--power"},
      {{"--fault", "nth=1:explode"}, "nth=1:explode"},
      {{"--frobnicate"}, "--frobnicate"},
      {{"--replay-to", "127.0.0.1:1"}, "--replay"},
      {{"--replay", "r", "--record", "r"}, "--record"},
      {{"--replay", "r", "--replay-to", "192.0.2.1:1"}, "--replay-to needs a loopback"}};
  for (const auto& [words, text] : cases) {
    std::ostringstream out;
    std::ostringstream err;
    int exit_code = 0;
    EXPECT_EQ(ParseProjectorOptions(words, out, err, exit_code), std::nullopt) << words.back();
    EXPECT_EQ(exit_code, 2);
    EXPECT_EQ(out.str(), "");
    EXPECT_NE(err.str().find(text), std::string::npos) << err.str();
  }
}

TEST(ProjectorOptions, UnderstandEverything) {
  std::ostringstream out;
  std::ostringstream err;
  int exit_code = -1;
  const auto options =
      ParseProjectorOptions({"--listen", "127.0.0.9:0", "--panel",   "1920x1200", "--no-panel-info",
                             "--class",  "4",           "--reply5",  "11",        "--power",
                             "standby",  "--headless",  "--state",   "s.json",    "--picture",
                             "p.png",    "--fault",     "nth=1:cut", "--fault",   "kind=any:slow",
                             "--serial", "tty",         "--seed",    "42",        "--speed-up",
                             "20"},
                            out, err, exit_code);
  ASSERT_TRUE(options) << err.str();
  EXPECT_EQ(TextOf(*options->Listen), "127.0.0.9:0");
  EXPECT_EQ(options->Station.Projector.Panel, (PanelSize{1920, 1200}));
  EXPECT_FALSE(options->Station.Projector.ReportsPanel);
  EXPECT_EQ(options->Station.Projector.ModelClass, 4);
  EXPECT_EQ(options->Station.Projector.Reply5, 11);
  EXPECT_EQ(options->Station.Projector.PowerState, Power::kStandby);
  EXPECT_EQ(options->Station.State, "s.json");
  EXPECT_EQ(options->Station.Picture, "p.png");
  EXPECT_EQ(options->Station.Faults.size(), 2u);
  EXPECT_EQ(options->Serial, "tty");
  EXPECT_EQ(options->Station.Seed, 42u);
  EXPECT_EQ(options->Station.SpeedUp, 20);
  EXPECT_FALSE(options->LeftToChance);
}

TEST(ProjectorOptions, ChooseThePlaceToServe) {
  const std::tuple<Words, const char*, bool> cases[] = {
      {Words{}, "127.0.0.1:7142", true},
      {{"--usb", "3"}, "127.0.0.1:7203", false},
      {{"--listen", "localhost:0"}, "127.0.0.1:0", true},
      {{"--listen", "127.0.0.2:0"}, "127.0.0.2:0", true},
      {{"--no-discovery"}, "127.0.0.1:7142", false},
      {{"--serial", "tty"}, "", true},
      {{"--serial", "tty", "--usb", "8"}, "127.0.0.1:7208", false}};
  for (const auto& [words, place, is_found] : cases) {
    std::ostringstream out;
    int exit_code = 0;
    const auto options = ParseProjectorOptions(words, out, out, exit_code);
    ASSERT_TRUE(options) << out.str();
    EXPECT_EQ(options->Listen ? TextOf(*options->Listen) : "", place);
    EXPECT_EQ(options->Discovery, is_found) << place;
  }
  for (const char* fault : {"chance=0.5:cut", "always:late=50~20"}) {
    std::ostringstream out;
    int exit_code = 0;
    const auto options = ParseProjectorOptions({"--fault", fault}, out, out, exit_code);
    EXPECT_TRUE(options && options->LeftToChance) << "its seed is told, " << fault;
  }
}

}  // namespace
}  // namespace warpline::sim
