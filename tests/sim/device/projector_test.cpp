#include "sim/device/projector.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <random>

#include "fuzz/feed_projector.h"
#include "sim/device/power.h"
#include "sim/device/profile.h"
#include "tests/support/said.h"
#include "tests/support/sim_hex.h"

namespace warpline::sim {
namespace {

// Small enough to write the frames out: 6 rows (4 digits), 8 columns (6 digits).
constexpr PanelSize kPanel{8, 6};

constexpr const char* kHorizontalSet = "01DF00000F02000B0011223344008105E0071F2052";
constexpr const char* kVerticalSet = "01DF00001003000C0001020304007FFB20F9102F3E19";
constexpr const char* kHorizontalStadium = "01DF0000051000010001F7";
constexpr const char* kVerticalStadium = "01DF0000051100010001F8";
constexpr const char* kMode2 = "01DE0000020200E3";

const RegisterSet kSent{{{"1122", "3344", "E0", "07", "00", "01", "0081", "05", "1F20"},
                         {"0102", "0304", "20", "F9", "00", "01", "007F", "FB", "102F3E"}}};
const RegisterSet kNeutral{{{"0000", "0000", "00", "00", "00", "00", "0080", "00", "0000"},
                            {"0000", "0000", "00", "00", "00", "00", "0080", "00", "000000"}}};

ProjectorSetup Class(int model_class, int reply5 = 0) {
  return {.Panel = kPanel, .ModelClass = model_class, .Reply5 = reply5};
}

const ProjectorSetup kStandby{.Panel = kPanel, .PowerState = Power::kStandby};
const ProjectorSetup kWithoutPanel{.Panel = kPanel, .ReportsPanel = false};
const ProjectorSetup kBlockAlone{.Panel = kPanel, .ModelClass = 3, .TakesCommands = false};

// A projector and one link to it.
struct World {
  explicit World(const ProjectorSetup& setup = Class(5)) : projector(setup, kNeutral) {}

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
  const std::string shorts = "11220102334403040081007F05FBE02007F900000101";
  const std::string tables = "102F3E" + std::string((1536 - 5) * 2, '0') + "201F";
  Bytes frame = FromHex("01FC00" + count + address + length + "00" + tables + shorts);
  frame.push_back(Checksum(frame, frame.size()));
  return ToHex(frame);
}

constexpr const char* kLowAddress = "00500400";
constexpr const char* kHighAddress = "00600400";

TEST(Projector, AnswersEachFrame) {
  const std::tuple<const char*, ProjectorSetup, const char*, const char*> cases[] = {
      {"probe", Class(5), kProbe, kAcceptedReply},
      {"probe, class 2", Class(2), kProbe, kAcceptedReply},
      {"probe without correction", Class(1), kProbe, "21DF0000010102"},
      {"probe in standby", kStandby, kProbe, "21DF000002030005"},
      {"class", Class(5), kClass, "2085000003000005AD"},
      {"class and layout", Class(4, 11), kClass, "20850000030B0004B7"},
      {"class in standby", kStandby, kClass, "2085000003000005AD"},
      {"prepare", Class(5), kPrepare, "221A000001003D"},
      {"prepare, other bytes", Class(5), "021A000002020222", "221A000001023F"},
      {"prepare in standby", kStandby, kPrepare, "221A000002030041"},
      {"store, class 4", Class(4), kStore, "21DF0000010102"},
      {"clear", Class(5), kClear, kAcceptedReply},
      {"probe, block alone", kBlockAlone, kProbe, kAcceptedReply},
      {"register, block alone", kBlockAlone, kWriteScroll, "21DF0000010102"},
      {"number 256", Class(5), "01DF0000020001E3", kRefusedReply},
      {"number 13", Class(5), "01DF0000050D00010001F4", kRefusedReply},
      {"number 19 as data", Class(5), "01DF0000021300F5", "21DF0000010102"},
      {"one byte too many", Class(5), "01DF000003000000E3", kRefusedReply},
      {"table a byte short", Class(5), "01DF00000E02000A0011223344008105E0071F30", kRefusedReply},
      {"data length lies", Class(5), "01DF00000F02000A0011223344008105E0071F2051", kRefusedReply},
      {"a byte behind the data", Class(5), "01DF0000070800020033440068", kRefusedReply},
      {"unknown header", Class(5), "01DD0000020000E0", "21DD0000010100"},
      {"wrong checksum", Class(5), "01DF0000020000E3", kRefusedReply},
      {"cut off", Class(5), "01DF0000", kRefusedReply},
      {"mode 3", Class(5), "01DE0000020300E4", "21DE000002020003"},
      {"whole block, class 5", Class(5), "01FC000000FD", "21FC000001011F"},
      {"running", Class(5), kRunning, "7F570000020001D9"},
      {"running in standby", kStandby, kRunning, "7F570000020000D8"},
      {"panel", Class(5), "7F5700000102D9", "7F570000050008000600E9"},
      {"panel not told", kWithoutPanel, "7F5700000102D9", kRunning},
      {"status", Class(5), "7F5700000103DA", "7F57000006000101000000DE"},
      {"input", Class(5), kInput7, "7F5700000100D7"},
      {"input in standby", kStandby, kInput7, "7F5700000103DA"},
      {"echo", Class(5), "7F570000050578563412F4", "7F570000050078563412EF"}};
  for (const auto& [name, setup, request, reply] : cases) {
    SCOPED_TRACE(name);
    EXPECT_EQ(World(setup).Send(request), reply);
  }
  EXPECT_EQ(World().Send("01"), "");
}

TEST(Projector, WritesEachRegister) {
  const std::tuple<const char*, std::vector<std::size_t>> cases[] = {
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
      {kVerticalStadium, {14}}};
  for (const auto& [frame, entries] : cases) {
    SCOPED_TRACE(frame);
    World world;
    world.SendAll({kClear, frame});
    EXPECT_EQ(world.projector.Working(), kNeutral) << "shown too early";
    world.SendAll({kShow});
    RegisterSet expected = kNeutral;
    for (const std::size_t entry : entries) {
      expected[entry / 9][entry % 9] = kSent[entry / 9][entry % 9];
    }
    EXPECT_EQ(world.projector.Working(), expected);
  }
  World world;
  world.SendAll({"01DF0000050E0001005549", kShow});
  EXPECT_EQ(world.projector.Working()[0][4], "55");
}

TEST(Projector, AppliesThenStoresThenClearsThenRestarts) {
  World world;
  world.SendAll({kPrepare, kClear, kHorizontalSet, kVerticalSet, kHorizontalStadium,
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
  world.SendAll({kHorizontalSet, kMode2, kInput7});
  world.projector.Restart();
  EXPECT_EQ(world.projector.Working(), kSent);
  EXPECT_EQ(world.projector.Mode(), 0);
  EXPECT_EQ(world.projector.Input(), 1);
  world.SendAll({kShow});
  EXPECT_EQ(world.projector.Working(), kNeutral) << "what had come in is lost";
}

TEST(Projector, TakesTheWholeBlockAtItsAddressOnly) {
  const std::tuple<const char*, int, int, const char*, const char*> cases[] = {
      {"class 3", 3, 0, kLowAddress, "00"},
      {"class 3, other address", 3, 0, kHighAddress, "02"},
      {"class 4", 4, 0, kHighAddress, "00"},
      {"class 4, layout 11", 4, 11, kLowAddress, "00"},
      {"class 4, layout 13", 4, 13, kLowAddress, "00"},
      {"class 4, layout 13, other address", 4, 13, kHighAddress, "02"},
      {"class 4, layout 12", 4, 12, kHighAddress, "00"},
      {"class 5", 5, 0, kHighAddress, "01"},
      {"class 2", 2, 0, kHighAddress, "01"}};
  for (const auto& [name, model_class, reply5, address, error] : cases) {
    SCOPED_TRACE(name);
    World world(Class(model_class, reply5));
    EXPECT_EQ(world.Send(WholeBlock(address)).substr(10, 2), error);
    const bool taken = std::string(error) == "00";
    EXPECT_EQ(world.projector.Working(), taken ? kSent : kNeutral);
    EXPECT_EQ(world.projector.Stored(), taken ? kSent : kNeutral);
  }
}

TEST(Projector, RefusesABlockForAnotherPanel) {
  World world(Class(4));
  Bytes frame = FromHex(WholeBlock(kHighAddress));
  frame[12 + 3] = 0x11;  // a fourth byte of column differences
  frame.back() = static_cast<std::uint8_t>(frame.back() + 0x11);
  EXPECT_EQ(world.Send(ToHex(frame)), "21FC0000010220");
  EXPECT_EQ(world.projector.Stored(), kNeutral);
}

TEST(Projector, ChangesItsModeWhenTheWishComesTrue) {
  constexpr const char* kReopen = "reopen";
  const std::tuple<const char*, std::vector<const char*>, int, const char*> cases[] = {
      {"0 at once", {kMode2, kMode0}, 0, "21DE000002000001"},
      {"2 at once", {kMode2}, 2, "21DE000002000203"},
      {"asking alone", {kMode2, kMode1}, 2, "21DE000002000203"},
      {"input selected", {kMode1, kInput7}, 1, "7F5700000100D7"},
      {"stored after", {kMode1, kStore}, 1, kAcceptedReply},
      {"stored before", {kStore, kMode1}, 1, "21DE000002000102"},
      {"input selected before", {kInput7, kMode1}, 0, "21DE000002000001"},
      {"dropped with the link", {kMode1, kReopen, kInput7}, 0, "7F5700000100D7"},
      {"store of another link", {kStore, kReopen, kMode1}, 0, "21DE000002000001"},
      {"withdrawn", {kMode1, kMode0, kInput7}, 0, "7F5700000100D7"}};
  for (const auto& [name, steps, mode, last_reply] : cases) {
    SCOPED_TRACE(name);
    World world;
    std::string reply;
    for (const char* step : steps) {
      if (step == kReopen) world.link = {};
      if (step != kReopen) reply = world.Send(step);
    }
    EXPECT_EQ(world.projector.Mode(), mode);
    EXPECT_EQ(reply, last_reply);
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
  reader.Append(FromHex("00100000"));
  EXPECT_EQ(reader.Next(), std::nullopt) << "4096 bytes may come";
  reader.Clear();
  reader.Append(FromHex("01DF00100100"));
  EXPECT_EQ(reader.Next(), FromHex("01DF00100100")) << "a nonsensical count ends the waiting";
  EXPECT_TRUE(reader.IsEmpty());
}

using std::chrono::seconds;

TEST(PowerSwitch, WarmsUpAndCoolsDown) {
  const Clock::time_point start = Clock::now();
  PowerSwitch power(Power::kStandby);
  power.Turn(true, start);
  EXPECT_EQ(power.At(start + seconds(29)), Power::kWarmingUp);
  EXPECT_EQ(power.Left(start + seconds(29)), milliseconds(1000));
  EXPECT_EQ(power.At(start + seconds(30)), Power::kOn);
  EXPECT_EQ(power.Left(start + seconds(30)), milliseconds(0));
  power.Turn(false, start + seconds(40));
  EXPECT_EQ(power.At(start + seconds(99)), Power::kCoolingDown);
  EXPECT_EQ(power.At(start + seconds(100)), Power::kStandby);
}

TEST(PowerSwitch, FinishesWhatItIsDoingBeforeItTurnsAround) {
  const Clock::time_point start = Clock::now();
  PowerSwitch power(Power::kOn);
  power.Turn(false, start);
  power.Turn(true, start + seconds(10));
  EXPECT_EQ(power.At(start + seconds(59)), Power::kCoolingDown);
  EXPECT_EQ(power.At(start + seconds(61)), Power::kWarmingUp);
  power.SetSpeedUp(10, start + seconds(70));
  EXPECT_EQ(power.Left(start + seconds(70)), milliseconds(2000)) << "faster from now on";
  EXPECT_EQ(power.At(start + seconds(71)), Power::kWarmingUp);
  EXPECT_EQ(power.At(start + seconds(72)), Power::kOn);
}

// Streams of right frames with a few changes, always the same ones.
TEST(FrameDecoder, StandsWhatAFixedSeedBringsUp) {
  const char* const frames[] = {kProbe, kClear,   kWriteScroll, kShow,    kStore,
                                kMode1, kPrepare, kClass,       kRunning, kInput7};
  std::mt19937 random(20);
  for (int round = 0; round < 20000; ++round) {
    Bytes stream{static_cast<std::uint8_t>(random() % 256)};
    for (auto count = random() % 4 + 1; count > 0; --count) {
      const Bytes frame = FromHex(frames[random() % std::size(frames)]);
      stream.insert(stream.end(), frame.begin(), frame.end());
    }
    for (auto changes = random() % 5; changes > 0; --changes) {
      stream[random() % stream.size()] = static_cast<std::uint8_t>(random() % 256);
    }
    if (random() % 8 == 0) stream.resize(random() % stream.size() + 1);
    ASSERT_EQ(FeedProjector(stream), "") << ToHex(stream);
  }
}

TEST(Profile, KeepsWhatIsMissing) {
  NamedText reason;
  const auto profile = ParseProfile(R"({"class": 4, "reply5": 13, "panel": "800x600"})", reason);
  ASSERT_TRUE(profile) << Said(reason);
  EXPECT_EQ(profile->Projector.ModelClass, 4);
  EXPECT_EQ(profile->Projector.Reply5, 13);
  EXPECT_EQ(profile->Projector.Panel, (PanelSize{800, 600}));
  EXPECT_TRUE(profile->Projector.ReportsPanel);
  EXPECT_TRUE(profile->Projector.TakesCommands);
}

TEST(Profile, IsRefusedWithAReason) {
  const std::pair<const char*, std::vector<const char*>> cases[] = {
      {"parse", {""}},
      {"object", {"[]"}},
      {"\"clas\"", {R"({"clas": 4})"}},
      {"0 to 255",
       {R"({"class": 256})", R"({"class": "5"})", R"({"class": 4.5})", R"({"reply5": -1})"}},
      {"1024x768", {R"({"panel": "63x600"})", R"({"panel": "800x600x2"})"}},
      {"string", {R"({"panel": 800})"}},
      {"boolean", {R"({"takes_commands": 1})"}}};
  for (const auto& [part, texts] : cases) {
    for (const char* text : texts) {
      NamedText reason;
      EXPECT_FALSE(ParseProfile(text, reason)) << text;
      EXPECT_NE(Said(reason).find(part), std::string::npos) << text << ": " << Said(reason);
    }
  }
}

}  // namespace
}  // namespace warpline::sim
