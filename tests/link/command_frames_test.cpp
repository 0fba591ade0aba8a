#include "link/command_frames.h"

#include <gtest/gtest.h>

#include "core/conversions.h"
#include "core/fault.h"

namespace warpline {
namespace {

// Every byte tells where it came from.
const RegisterSet kRegisters{{
    {"1122", "3344", "55", "66", "77", "88", "99AA", "BB", "CCDD"},
    {"0102", "0304", "05", "06", "07", "08", "090A", "0B", "0C0D0E"},
}};

std::string FrameText(int number, const RegisterSet& registers, std::int16_t mode = 0) {
  const auto text = ComposeCommandText(number, registers, mode);
  return text ? HexOf(FrameOf(*text)) : "none";
}

TEST(CommandFrames, EveryNumberHasItsBytes) {
  constexpr struct {
    int number;
    std::int16_t mode;
    const char* frame;
  } kCases[] = {
      {0, 0, "01DF0000020000E2"},
      {1, 0, "01DF0000020100E3"},
      {2, 0, "01DF00000F02000B001122334499AABB5566CCDD08"},
      {3, 0, "01DF00001003000C0001020304090A0B05060C0D0E59"},
      {4, 0, "01DF0000090400050099AABBCCDD99"},
      {5, 0, "01DF00000A05000600090A0B0C0D0E3A"},
      {6, 0, "01DF00000606000200112221"},
      {7, 0, "01DF000006070002000102F2"},
      {8, 0, "01DF00000608000200334467"},
      {9, 0, "01DF000006090002000304F8"},
      {10, 0, "01DF0000050A0001005545"},
      {11, 0, "01DF0000050B00010005F6"},
      {12, 0, "01DF0000050C0001006658"},
      {14, 0, "01DF0000050E000100776B"},
      {16, 0, "01DF00000510000100887E"},
      {17, 0, "01DF0000051100010008FF"},
      {18, 0, "01DE0000020000E1"},
      {18, 1, "01DE0000020100E2"},
      {18, 2, "01DE0000020200E3"},
      {18, 255, "01DE000002FF00E0"},
      {19, 2, "01DE0000020100E2"},
      {20, 0, "021A000002020121"},
      {21, 0, "01DF0000021200F4"},
  };
  for (const auto& [number, mode, frame] : kCases) {
    EXPECT_EQ(FrameText(number, kRegisters, mode), frame) << number << " mode " << mode;
  }
  for (const int number : {-1, 13, 15, 22, 1000}) {
    EXPECT_EQ(FrameText(number, kRegisters), "none") << number;
  }
  EXPECT_EQ(HexOf(FrameOf(kProbeText)), "01DF000000E0");
  EXPECT_EQ(HexOf(FrameOf(kModelClassText)), "00850000010086");
}

TEST(CommandFrames, TablesFollowTheirLength) {
  RegisterSet registers = kRegisters;
  registers[kHorizontal][kCompDisp].clear();
  EXPECT_EQ(FrameText(14, registers), "01DF0000050E00010000F4") << "empty is sent as zero";
  registers[kHorizontal][kCorre2] = std::string(766, '0');
  const std::string frame = FrameText(kCommandHorizontalSet, registers);
  // 383 + 9 = 0x188 data bytes, 0x18C bytes behind the count.
  EXPECT_EQ(frame.substr(0, 36), "01DF00018C020088011122334499AABB5566");
  EXPECT_EQ(frame.size(), 2u * (9 + 0x188 + 1));
  registers[kHorizontal][kCorre2] = std::string(2 * 65536, '0');
  EXPECT_THROW(ComposeCommandText(kCommandHorizontalSet, registers, 0), Fault);
}

// The whole block that a model stores by; empty when it stores by anything else.
Frame BlockOf(const RegisterSet& registers, ModelAnswer model) {
  const auto store = ComposeStore(registers, model);
  return store && store->whole_block ? store->frame : Frame();
}

TEST(WholeBlock, AddressFollowsClassAndReply) {
  constexpr int kLow[][2] = {{3, 0}, {4, 11}, {4, 13}, {3, 12}},
                kHigh[][2] = {{4, 0}, {4, 12}, {4, 17}};
  const auto head = [](int model_class, int reply5) {  // up to the first byte of the tables
    return HexOf(BlockOf(kRegisters, {model_class, reply5})).substr(0, 24);
  };
  for (const auto& [model_class, reply5] : kLow) {
    EXPECT_EQ(head(model_class, reply5), "01FC00061D00500400160600") << model_class << reply5;
  }
  for (const auto& [model_class, reply5] : kHigh) {
    EXPECT_EQ(head(model_class, reply5), "01FC00061D00600400160600") << model_class << reply5;
  }
}

TEST(WholeBlock, TablesMeetFromBothEnds) {
  const std::string hex = HexOf(BlockOf(kRegisters, {3, 0}));
  ASSERT_EQ(hex.size(), 2u * 1571);
  EXPECT_EQ(hex.substr(2 * 12, 8), "0C0D0E00");
  EXPECT_EQ(hex.find_first_not_of('0', 2 * 15), 2u * 1546);
  EXPECT_EQ(hex.substr(2 * 1544), "0000DDCC112201023344030499AA090ABB0B550566067707880804");
}

TEST(WholeBlock, RefusesTablesThatDoNotFitTogether) {
  RegisterSet registers = kRegisters;
  registers[kVertical][kCorre2] = std::string(2 * 1000, '1');
  registers[kHorizontal][kCorre2] = std::string(2 * 536, '2');
  const Frame full = BlockOf(registers, {4, 11});
  ASSERT_EQ(full.size(), 1571u);
  EXPECT_EQ(HexOf(full).substr(2 * 1010, 8), "11112222");
  registers[kHorizontal][kCorre2] += "22";
  EXPECT_FALSE(ComposeStore(registers, {4, 11}));
  EXPECT_TRUE(ComposeStore(registers, {5, 11})) << "command 21 carries no table";
}

TEST(Store, ModelClassChoosesItsFrame) {
  for (const int model_class : {0, 2}) EXPECT_FALSE(ComposeStore(kRegisters, {model_class, 0}));
  for (const int model_class : {5, 6, 255}) {
    const auto store = ComposeStore(kRegisters, {model_class, 11});
    ASSERT_TRUE(store) << model_class;
    EXPECT_FALSE(store->whole_block) << model_class;
    EXPECT_EQ(HexOf(store->frame), "01DF0000021200F4") << model_class;
  }
}

}  // namespace
}  // namespace warpline
