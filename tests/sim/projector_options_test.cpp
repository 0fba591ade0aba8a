#include "sim/projector_options.h"

#include <gtest/gtest.h>

#include <array>
#include <sstream>

#include "platform/files.h"
#include "tests/support/temp_folder.h"

namespace warpline::sim {
namespace {

using Words = std::vector<std::string>;

// What a run says that ends at once, with its exit code.
std::string SaidBy(Words words, const char* language, int expected_code) {
  words.insert(words.begin(), {"--language", language});
  std::ostringstream out;
  std::ostringstream err;
  int exit_code = -1;
  EXPECT_EQ(ParseProjectorOptions(words, out, err, exit_code), std::nullopt) << words.back();
  EXPECT_EQ(exit_code, expected_code) << words.back();
  EXPECT_EQ((expected_code == 0 ? err : out).str(), "");
  return out.str() + err.str();
}

Words Aimed(Words words) {
  words.insert(words.begin(), {"--wall", "flat:4:0:middle", "--photo", "p.png"});
  return words;
}

TEST(ProjectorOptions, RefuseWrongUsage) {
  const TempFolder folder;
  const auto profile = [&](const char* name, const char* text) {
    return Utf8Of(folder.Write(name, text));
  };
  const std::tuple<Words, const char*, const char*> cases[] = {
      {{"--panel", "63x100"}, "64 to 4096", "64～4096"},
      {{"--panel", "1024"}, "64 to 4096", "64～4096"},
      {{"--panel", "1024x4097"}, "64 to 4096", "64～4096"},
      {{"--panel", "99999999999x1"}, "64 to 4096", "64～4096"},
      {{"--wall", "cylinder:4:-0.4"}, "--wall needs", "--wall には"},
      {{"--wall", "cylinder:4:-0.4:bottom:"}, "--wall needs", "--wall には"},
      {{"--wall", "barrel:4:0:top"}, "--wall needs", "--wall には"},
      {{"--wall", "flat:0.9:0:top"}, "--wall needs", "--wall には"},
      {{"--wall", "sphere:4:nan:top"}, "--wall needs", "--wall には"},
      {{"--wall", "sphere:4:1m:top"}, "--wall needs", "--wall には"},
      {{"--wall", "sphere:4:0:left"}, "--wall needs", "--wall には"},
      {{"--photo", "p.png"}, "--photo needs --camera", "--photo には --camera も"},
      {Aimed({"--camera", "0,0,4"}), "--camera needs X,Y,Z", "--camera には"},  // in the wall
      {Aimed({"--camera", "0,0"}), "--camera needs X,Y,Z", "--camera には"},
      {Aimed({"--camera", "0,0,-4m"}), "--camera needs X,Y,Z", "--camera には"},
      {Aimed({"--camera", "0,0,-4", "--room", "11"}), "--room needs a number from 0 to 10",
       "--room には 0～10"},
      {Aimed({"--camera", "0,0,-4", "--camera-k1", "-.3"}), "from -0.14 to 0.2", "-0.14～0.2"},
      {Aimed({"--camera", "0,0,-4", "--photo-size", "319x320"}), "320 to 10000", "320～10000"},
      {{"--source", profile("card.png", "GIF89a")}, "it is no PNG picture", "PNG 画像では"},
      {{"--listen", "0.0.0.0:7142"}, "loopback", "ループバック"},
      {{"--listen", "127.0.0.1"}, "port", "ポート"},
      {{"--listen", "127.0.0.1:70000"}, "port", "ポート"},
      {{"--usb", "9"},
       "warpline-projector: --usb must be a whole number from 1 to 8, not \"9\".\n"
       "\"warpline-projector --help\" shows how it is used.\n",
       "warpline-projector: --usb には 1～8 の整数"},
      {{"--usb", "1", "--listen", "127.0.0.1:0"}, "--usb", "--usb は同時に"},
      {{"--class", "-1"}, "--class", "--class には 0～255"},
      {{"--class"}, "--class needs a value", "--class に値"},
      {{"--seed", "x"}, "--seed", "--seed には 0 以上"},
      {{"--power", "off"}, "--power must be one of on, standby, not \"off\"", "(「off」は"},
      {{"--state", "a", "--state", "b"}, "--state may be given only once", "--state は 1 回"},
      {{"--fault", "nth=1:explode"}, "nth=1:explode", "--fault のルール"},
      {{"--fault", "every=0:cut"}, "every= needs", "every= には 1 以上"},
      {{"--profile", profile("profile", R"({"clas": 4})")}, "key \"clas\"", "キー「clas」はあ"},
      {{"--profile", profile("broken", "{")}, "used: [json.", "JSON の内容が"},
      {{"--frobnicate"}, "no option \"--frobnicate\" here.\n", "「--frobnicate」という"},
      {{"--panle=64x64"}, "here. Did you mean \"--panel\"?", "「--panel」ではありませんか"},
      {{"left"}, "\"left\" is one too many", "「left」が余分"},
      {{"--listen", "8.8.8.8:1"}, "\"warpline-projector --help\"", "「warpline-projector --help」"},
      {{"--replay-to", "127.0.0.1:1"}, "--replay", "--replay-to には --replay も"},
      {{"--replay", "r", "--record", "r"}, "--record", "同時に"},
      {{"--replay", "r", "--replay-to", "192.0.2.1:1"},
       "--replay-to needs a loopback",
       "--replay-to には、"}};
  for (const auto& [words, english, japanese] : cases) {
    for (const auto& [language, text] : {std::pair("en", english), {"ja", japanese}}) {
      const std::string said = SaidBy(words, language, 2);
      EXPECT_NE(said.find(text), std::string::npos) << said;
    }
  }
}

TEST(ProjectorOptions, ExplainThemselvesInBothLanguages) {
  const std::string english = SaidBy({"--help"}, "en", 0);
  const std::string japanese = SaidBy({"--help"}, "ja", 0);
  for (const char* line :
       {"Usage: warpline-projector [OPTIONS]", "--usb INT:INT in [1 - 8] Excludes: --listen",
        "--speed-up INT:INT in [1 - 1000]=1", "--power TEXT:{on,standby}=on", "--fault TEXT ...",
        "--seed UINT ", "--replay-to TEXT Needs: --replay", "\nFaults: a rule is WHEN:WHAT.\n"}) {
    EXPECT_NE(english.find(line), std::string::npos) << line << "\n" << english;
  }
  for (const char* word : {"Usage", "OPTIONS", "Options", "Needs", "Excludes", "TEXT", "INT"}) {
    EXPECT_EQ(japanese.find(word), std::string::npos) << word << "\n" << japanese;
  }
  EXPECT_TRUE(SaidBy({"--version"}, "ja", 0).starts_with("warpline-projector 3.0\ncommit: "));
  EXPECT_NE(japanese.find("--usb 整数:1～8 併用不可: --listen"), std::string::npos) << japanese;
}

TEST(ProjectorOptions, UnderstandEverything) {
  std::ostringstream out;
  std::ostringstream err;
  int exit_code = -1;
  const auto options = ParseProjectorOptions(
      {"--listen", "127.0.0.9:0", "--panel",          "1920x1200", "--no-panel-info",
       "--class",  "4",           "--reply5",         "11",        "--power",
       "standby",  "--headless",  "--state",          "s.json",    "--picture",
       "p.png",    "--fault",     "nth=1:cut",        "--fault",   "kind=any:slow",
       "--serial", "tty",         "--seed",           "42",        "--speed-up",
       "20",       "--wall",      "bow:20:-.5:middle"},
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
  ASSERT_TRUE(options->Station.Wall);
  EXPECT_EQ(options->Station.Wall->Shape, WallShape::kCylinderUpright);
  EXPECT_EQ(options->Station.Wall->Distance, 20);
  EXPECT_EQ(options->Station.Wall->Curvature, -0.5);
  EXPECT_EQ(options->Station.Wall->Axis, LensAxis::kMiddle);
}

TEST(ProjectorOptions, DescribeTheCamera) {
  std::ostringstream out;
  int exit_code = -1;
  const auto options =
      ParseProjectorOptions(Aimed({"--camera", "1,-0.5,-3", "--room", "0.5", "--camera-roll", "-5",
                                   "--camera-k1", ".02", "--photo-size", "640x480"}),
                            out, out, exit_code);
  ASSERT_TRUE(options) << out.str();
  EXPECT_EQ(options->Station.Photo, "p.png");
  const warpline::Camera camera = options->Station.Camera.value();
  EXPECT_EQ(
      (std::array<double, 6>{camera.X, camera.Y, camera.Z, camera.Room, camera.Roll, camera.K1}),
      (std::array<double, 6>{1, -0.5, -3, 0.5, -5, 0.02}));
  EXPECT_EQ(camera.Photo, (PanelSize{640, 480}));
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
