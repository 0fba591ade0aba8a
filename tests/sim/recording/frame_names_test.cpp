#include "sim/recording/frame_names.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>

#include "picture/test_picture.h"
#include "sim/station/shown_picture.h"
#include "tests/support/sim_hex.h"

namespace warpline::sim {
namespace {

TEST(FrameNames, TellEveryFrameApart) {
  const ProjectorTexts& texts = ProjectorTextsOf(Language::kEnglish);
  const std::tuple<const char*, const char*> cases[] = {
      {"01DF000000E0", "Probe"},
      {"01DF0000020000E2", "Clear (0)"},
      {"01DF0000020100E3", "Show (1)"},
      {"01DF0000021200F4", "Store (21)"},
      {"01DF00000608000200334467", "Registers (8)"},
      {"01DE0000020100E2", "Mode (18, 19)"},
      {"021A000002020121", "Prepare (20)"},
      {"00850000010086", "Model class?"},
      {"7F5700000101D8", "Running?"},
      {"01FC000000FD", "Whole block (21)"},
      {"01DF0000020D00EF", "Unknown"},
      {"01", "Unknown"},
      {"", "Unknown"}};
  for (const auto& [frame, name] : cases) EXPECT_EQ(FrameName(texts, FromHex(frame)), name);
  EXPECT_EQ(FrameHex(FromHex("01DF00"), 3), "01 DF 00");
  EXPECT_EQ(FrameHex(FromHex("01DF00"), 2), "01 DF ...");
}

TEST(ShownPicture, MarksLinesAtTheirLimitAndGoesDarkWithThePower) {
  const PanelSize panel{160, 120};
  RegisterSet registers = NeutralRegisters(panel);
  registers[kHorizontal][kCorre2].replace(20, 2, "78");  // rows 22 and 23: -8, then 7
  const RgbImage source = TestPicture(panel);
  const ShownPicture marked = PanelAsShown(source, registers, Power::kOn, true);
  EXPECT_EQ(marked.RowsAtLimit, 2);
  EXPECT_EQ(marked.ColumnsAtLimit, 0);
  const auto purple = [&](int y) {
    const std::uint8_t* pixel = marked.Image.At(0, y);
    return pixel[0] == 255 && pixel[1] == 0 && pixel[2] == 255;
  };
  EXPECT_FALSE(purple(21));
  EXPECT_TRUE(purple(22));
  EXPECT_TRUE(purple(23));
  EXPECT_FALSE(purple(24));
  for (const Power power : {Power::kStandby, Power::kWarmingUp, Power::kCoolingDown}) {
    const RgbImage dark = PanelAsShown(source, registers, power, true).Image;
    EXPECT_EQ(dark.Pixels, BlackImage(panel).Pixels);
  }
}

}  // namespace
}  // namespace warpline::sim
