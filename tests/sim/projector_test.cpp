#include "sim/projector.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <tuple>
#include <vector>

#include "tests/sim/hex.h"

namespace warpline::sim {
namespace {

// Small enough to write the frames out: 6 rows (4 digits), 8 columns (6 digits).
constexpr PanelSize kPanel{8, 6};

constexpr const char* kClear = "01DF0000020000E2";
constexpr const char* kShow = "01DF0000020100E3";
constexpr const char* kStore = "01DF0000021200F4";
constexpr const char* kHorizontalSet = "01DF00000F02000B0011223344008105E0071F2052";
constexpr const char* kVerticalSet = "01DF00001003000C0001020304007FFB20F9102F3E19";
constexpr const char* kHorizontalStadium = "01DF0000051000010001F7";
constexpr const char* kVerticalStadium = "01DF0000051100010001F8";
constexpr const char* kMode0 = "01DE0000020000E1";
constexpr const char* kMode1 = "01DE0000020100E2";
constexpr const char* kMode2 = "01DE0000020200E3";
constexpr const char* kInput7 = "7F570000050407000000E6";

const RegisterSet kSent{{{"1122", "3344", "E0", "07", "00", "01", "0081", "05", "1F20"},
                         {"0102", "0304", "20", "F9", "00", "01", "007F", "FB", "102F3E"}}};
const RegisterSet kNeutral{{{"0000", "0000", "00", "00", "00", "00", "0080", "00", "0000"},
                            {"0000", "0000", "00", "00", "00", "00", "0080", "00", "000000"}}};

ProjectorSetup SetupOfClass(int model_class, int reply5 = 0) {
  ProjectorSetup setup;
  setup.Panel = kPanel;
  setup.ModelClass = model_class;
  setup.Reply5 = reply5;
  return setup;
}

ProjectorSetup Standby() {
  ProjectorSetup setup = SetupOfClass(5);
  setup.PowerState = Power::kStandby;
  return setup;
}

ProjectorSetup WithoutPanel() {
  ProjectorSetup setup = SetupOfClass(5);
  setup.ReportsPanel = false;
  return setup;
}

// A projector and one link to it.
struct World {
  explicit World(const ProjectorSetup& setup = SetupOfClass(5)) : projector(setup, kNeutral) {}

  std::string Send(std::string_view hex) {
    return ToHex(projector.HandleFrame(link, FromHex(hex)));
  }
  void SendAll(const std::vector<const char*>& frames) {
    for (const char* frame : frames) ASSERT_EQ(Send(frame).substr(10, 2), "00") << frame;
  }

  SimulatedProjector projector;
  LinkMemory link;
};

// The whole block of kSent for class 4, written field by field as it lies in memory.
std::string WholeBlock(const std::string& address) {
  const std::string count = "061D";   // 4 + 2 + 1 + 1536 + 22
  const std::string length = "1606";  // 1536 + 22
  const std::string shorts =
      "1122"
      "0102"
      "3344"
      "0304"
      "0081"
      "007F"
      "05"
      "FB"
      "E0"
      "20"
      "07"
      "F9"
      "00"
      "00"
      "01"
      "01";
  const std::string tables = "102F3E" + std::string((1536 - 5) * 2, '0') + "201F";
  Bytes frame = FromHex("01FC00" + count + address + length + "00" + tables + shorts);
  frame.push_back(Checksum(frame, frame.size()));
  return ToHex(frame);
}

constexpr const char* kLowAddress = "00500400";
constexpr const char* kHighAddress = "00600400";

TEST(Projector, AnswersEachFrame) {
  const struct {
    const char* name;
    ProjectorSetup setup;
    const char* request;
    const char* reply;
  } cases[] = {
      {"probe", SetupOfClass(5), "01DF000000E0", "21DF0000010001"},
      {"probe, class 2", SetupOfClass(2), "01DF000000E0", "21DF0000010001"},
      {"probe without correction", SetupOfClass(1), "01DF000000E0", "21DF0000010102"},
      {"probe in standby", Standby(), "01DF000000E0", "21DF000002030005"},
      {"class", SetupOfClass(5), "00850000010086", "2085000003000005AD"},
      {"class and layout", SetupOfClass(4, 11), "00850000010086", "20850000030B0004B7"},
      {"class in standby", Standby(), "00850000010086", "2085000003000005AD"},
      {"prepare", SetupOfClass(5), "021A000002020121", "221A000001003D"},
      {"prepare in standby", Standby(), "021A000002020121", "221A000002030041"},
      {"store, class 4", SetupOfClass(4), kStore, "21DF0000010102"},
      {"clear", SetupOfClass(5), kClear, "21DF0000010001"},
      {"clear without correction", SetupOfClass(1), kClear, "21DF0000010102"},
      {"number 13", SetupOfClass(5), "01DF0000050D00010001F4", "21DF0000010203"},
      {"number 19 as data", SetupOfClass(5), "01DF0000021300F5", "21DF0000010102"},
      {"one byte too many", SetupOfClass(5), "01DF000003000000E3", "21DF0000010203"},
      {"table a byte short", SetupOfClass(5), "01DF00000E02000A0011223344008105E0071F30",
       "21DF0000010203"},
      {"data length lies", SetupOfClass(5), "01DF00000F02000A0011223344008105E0071F2051",
       "21DF0000010203"},
      {"unknown header", SetupOfClass(5), "01DD0000020000E0", "21DD0000010100"},
      {"wrong checksum", SetupOfClass(5), "01DF0000020000E3", "21DF0000010203"},
      {"cut off", SetupOfClass(5), "01DF0000", "21DF0000010203"},
      {"mode 3", SetupOfClass(5), "01DE0000020300E4", "21DE000002020003"},
      {"whole block, class 5", SetupOfClass(5), "01FC000000FD", "21FC000001011F"},
      {"running", SetupOfClass(5), "7F5700000101D8", "7F570000020001D9"},
      {"running in standby", Standby(), "7F5700000101D8", "7F570000020000D8"},
      {"panel", SetupOfClass(5), "7F5700000102D9", "7F570000050008000600E9"},
      {"panel not told", WithoutPanel(), "7F5700000102D9", "7F5700000101D8"},
      {"status", SetupOfClass(5), "7F5700000103DA", "7F57000006000101000000DE"},
      {"input", SetupOfClass(5), kInput7, "7F5700000100D7"},
      {"input in standby", Standby(), kInput7, "7F5700000103DA"},
      {"echo", SetupOfClass(5), "7F570000050578563412F4", "7F570000050078563412EF"},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(World(row.setup).Send(row.request), row.reply);
  }
  EXPECT_EQ(World().Send("01"), "");
}

TEST(Projector, WritesEachRegister) {
  const struct {
    const char* frame;
    std::vector<std::size_t> entries;
  } cases[] = {
      {kHorizontalSet, {0, 1, 2, 3, 6, 7, 8}},
      {kVerticalSet, {9, 10, 11, 12, 15, 16, 17}},
      {"01DF000009040005000081051F20B7", {6, 7, 8}},
      {"01DF00000A05000600007FFB102F3EEC", {15, 16, 17}},
      {"01DF00000606000200112221", {0}},
      {"01DF000006070002000102F2", {9}},
      {"01DF00000608000200334467", {1}},
      {"01DF000006090002000304F8", {10}},
      {"01DF0000050A000100E0D0", {2}},
      {"01DF0000050B0001002011", {11}},
      {"01DF0000050C00010007F9", {3}},
      {kHorizontalStadium, {5}},
      {kVerticalStadium, {14}},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.frame);
    World world;
    world.SendAll({kClear, row.frame});
    EXPECT_EQ(world.projector.Working(), kNeutral) << "shown too early";
    world.SendAll({kShow});
    RegisterSet expected = kNeutral;
    for (const std::size_t entry : row.entries) {
      expected[entry / 9][entry % 9] = kSent[entry / 9][entry % 9];
    }
    EXPECT_EQ(world.projector.Working(), expected);
  }
  World world;
  world.SendAll({"01DF0000050E0001005549", kShow});
  EXPECT_EQ(world.projector.Working()[0][4], "55");
}

TEST(Projector, AppliesThenStoresThenClears) {
  World world;
  world.SendAll({"021A000002020121", kClear, kHorizontalSet, kVerticalSet, kHorizontalStadium,
                 kVerticalStadium, kShow});
  EXPECT_EQ(world.projector.Working(), kSent);
  EXPECT_EQ(world.projector.Stored(), kNeutral);
  world.SendAll({kStore});
  EXPECT_EQ(world.projector.Stored(), kSent);
  world.SendAll({kClear});
  EXPECT_EQ(world.projector.Working(), kSent);
  world.SendAll({kShow});
  EXPECT_EQ(world.projector.Working(), kNeutral);
  EXPECT_EQ(world.projector.Stored(), kSent);
}

TEST(Projector, TakesTheWholeBlockAtItsAddressOnly) {
  const struct {
    const char* name;
    int model_class;
    int reply5;
    const char* address;
    const char* error;
  } cases[] = {
      {"class 3", 3, 0, kLowAddress, "00"},
      {"class 3, other address", 3, 0, kHighAddress, "02"},
      {"class 4", 4, 0, kHighAddress, "00"},
      {"class 4, layout 11", 4, 11, kLowAddress, "00"},
      {"class 4, layout 13", 4, 13, kLowAddress, "00"},
      {"class 4, layout 13, other address", 4, 13, kHighAddress, "02"},
      {"class 4, layout 12", 4, 12, kHighAddress, "00"},
      {"class 5", 5, 0, kHighAddress, "01"},
      {"class 2", 2, 0, kHighAddress, "01"},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.name);
    World world(SetupOfClass(row.model_class, row.reply5));
    EXPECT_EQ(world.Send(WholeBlock(row.address)).substr(10, 2), row.error);
    const bool taken = std::string(row.error) == "00";
    EXPECT_EQ(world.projector.Working(), taken ? kSent : kNeutral);
    EXPECT_EQ(world.projector.Stored(), taken ? kSent : kNeutral);
  }
}

TEST(Projector, RefusesABlockForAnotherPanel) {
  World world(SetupOfClass(4));
  Bytes frame = FromHex(WholeBlock(kHighAddress));
  frame[12 + 3] = 0x11;  // a fourth byte of column differences
  frame.back() = static_cast<std::uint8_t>(frame.back() + 0x11);
  EXPECT_EQ(world.Send(ToHex(frame)), "21FC0000010220");
  EXPECT_EQ(world.projector.Stored(), kNeutral);
}

TEST(Projector, ChangesItsModeWhenTheWishComesTrue) {
  constexpr const char* kReopen = "reopen";
  const struct {
    const char* name;
    std::vector<const char*> steps;
    int mode;
    const char* last_reply;
  } cases[] = {
      {"0 at once", {kMode2, kMode0}, 0, "21DE000002000001"},
      {"2 at once", {kMode2}, 2, "21DE000002000203"},
      {"asking alone", {kMode2, kMode1}, 2, "21DE000002000203"},
      {"input selected", {kMode1, kInput7}, 1, "7F5700000100D7"},
      {"stored after", {kMode1, kStore}, 1, "21DF0000010001"},
      {"stored before", {kStore, kMode1}, 1, "21DE000002000102"},
      {"input selected before", {kInput7, kMode1}, 0, "21DE000002000001"},
      {"dropped with the link", {kMode1, kReopen, kInput7}, 0, "7F5700000100D7"},
      {"store of another link", {kStore, kReopen, kMode1}, 0, "21DE000002000001"},
      {"withdrawn", {kMode1, kMode0, kInput7}, 0, "7F5700000100D7"},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.name);
    World world;
    std::string reply;
    for (const char* step : row.steps) {
      if (step == kReopen) {
        world.link = {};
      } else {
        reply = world.Send(step);
      }
    }
    EXPECT_EQ(world.projector.Mode(), row.mode);
    EXPECT_EQ(reply, row.last_reply);
  }
}

// True when the projector, shown its incoming set, differs from another one.
bool Differs(SimulatedProjector one, SimulatedProjector other) {
  LinkMemory link;
  const auto state = [&link](SimulatedProjector& projector) {
    const RegisterSet shown = projector.Working();
    projector.HandleFrame(link, FromHex(kShow));
    return std::tuple(shown, projector.Working(), projector.Stored(), projector.Mode(),
                      projector.Input());
  };
  return state(one) != state(other);
}

TEST(Projector, RefusesEverySingleChangedByte) {
  const std::vector<std::string> frames = {kClear,           kShow,
                                           kStore,           kHorizontalSet,
                                           kVerticalSet,     kHorizontalStadium,
                                           kMode0,           kMode1,
                                           kMode2,           "021A000002020121",
                                           "00850000010086", "01DF000000E0",
                                           kInput7,          WholeBlock(kHighAddress)};
  for (const std::string& frame : frames) {
    World world(SetupOfClass(frame.size() > 100 ? 4 : 5));
    world.SendAll({kHorizontalSet, kMode2});
    const SimulatedProjector before = world.projector;
    const Bytes whole = FromHex(frame);
    for (std::size_t i = 0; i < whole.size(); ++i) {
      for (int change = 1; change < 256; ++change) {
        Bytes changed = whole;
        changed[i] = static_cast<std::uint8_t>(changed[i] ^ change);
        FrameReader reader;
        reader.Append(changed);
        for (const Bytes& received : {changed, reader.Next().value_or(changed)}) {
          const Bytes reply = world.projector.HandleFrame(world.link, received);
          ASSERT_NE(reply[kPayloadStart], kAccepted) << ToHex(changed);
        }
      }
    }
    EXPECT_FALSE(Differs(world.projector, before)) << frame;
    EXPECT_FALSE(world.link.ModeOneAsked || world.link.Stored) << frame;
  }
}

TEST(Projector, KeepsItsPeaceOnNoise) {
  World world;
  std::uint32_t seed = 1;
  const auto next = [&seed] {
    return static_cast<std::uint8_t>((seed = seed * 1664525 + 1013904223) >> 24);
  };
  for (int round = 0; round < 20000; ++round) {
    Bytes noise(next() % 32);
    for (std::uint8_t& byte : noise) byte = next();
    if (noise.size() > 6) {
      const FrameHeader headers[] = {kDataHeader, kModeHeader, kWholeBlockHeader, kLibraryHeader};
      std::ranges::copy(headers[next() % 4], noise.begin());
      noise[3] = 0;
      noise[4] = static_cast<std::uint8_t>(noise.size() - 6);
      noise.back() = Checksum(noise, noise.size() - 1);
    }
    world.projector.HandleFrame(world.link, noise);
    ASSERT_TRUE(RegistersFit(world.projector.Working(), kPanel));
  }
}

TEST(FrameReader, CutsTheStream) {
  FrameReader reader;
  for (const std::uint8_t byte : FromHex(kClear)) {
    EXPECT_EQ(reader.Next(), std::nullopt);
    reader.Append(Bytes{byte});
  }
  EXPECT_EQ(reader.Next(), FromHex(kClear));
  reader.Append(FromHex(std::string(kClear) + kShow + "01DF"));
  EXPECT_EQ(reader.Next(), FromHex(kClear));
  EXPECT_EQ(reader.Next(), FromHex(kShow));
  EXPECT_EQ(reader.Next(), std::nullopt);
  reader.Append(FromHex("00FFFF00"));
  EXPECT_EQ(reader.Next(), FromHex("01DF00FFFF00")) << "a nonsensical count ends the waiting";
  EXPECT_TRUE(reader.IsEmpty());
}

}  // namespace
}  // namespace warpline::sim
