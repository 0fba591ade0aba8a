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
      {{"--listen", "192.0.2.1:7142"}, "loopback"},
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
  const auto options = ParseProjectorOptions(
      {"--listen", "127.0.0.9:0",   "--panel",   "1920x1200", "--no-panel-info", "--class",
       "4",        "--reply5",      "11",        "--power",   "standby",         "--headless",
       "--state",  "s.json",        "--picture", "p.png",     "--fault",         "nth=1:cut",
       "--fault",  "kind=any:slow", "--serial",  "tty"},
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
}

TEST(ProjectorOptions, ChooseThePlaceToServe) {
  const std::tuple<Words, const char*> cases[] = {
      {Words{}, "127.0.0.1:7142"},
      {{"--usb", "3"}, "127.0.0.1:7203"},
      {{"--listen", "localhost:0"}, "127.0.0.1:0"},
      {{"--serial", "tty"}, ""},
      {{"--serial", "tty", "--usb", "8"}, "127.0.0.1:7208"}};
  for (const auto& [words, place] : cases) {
    std::ostringstream out;
    int exit_code = 0;
    const auto options = ParseProjectorOptions(words, out, out, exit_code);
    ASSERT_TRUE(options) << out.str();
    EXPECT_EQ(options->Listen ? TextOf(*options->Listen) : "", place);
  }
}

}  // namespace
}  // namespace warpline::sim
