#include "sim/line/serial.h"

#include <gtest/gtest.h>

#include <list>
#include <thread>

#include "sim/station/server.h"
#include "standin/beamlink_standin.h"
#include "tests/support/comes_true.h"
#include "tests/support/environment.h"
#include "tests/support/said.h"
#include "tests/support/temp_folder.h"

namespace warpline::sim {
namespace {

constexpr std::int32_t kSerialKind = 0;

struct SerialWorld {
  explicit SerialWorld(bool fast = true) {
    NamedText reason;
    EXPECT_TRUE(server.OfferSerial(path, fast, reason)) << Said(reason);
  }

  TempFolder folder;
  std::filesystem::path path = folder / "projector";
  EnvironmentValue port{"WARPLINE_COM3", path};
  Station station{StationSetup{}};
  Server server{station};
  BeamlinkStandin library;
};

TEST(Serial, CarriesEveryByteUnchanged) {
  for (const bool fast : {true, false}) {
    SerialWorld world(fast);
    const auto open = [&](const char* port) {
      return world.library.Open(kSerialKind, port, "38400", kBeamlinkBlocking);
    };
    const std::int32_t handle = open("COM3");
    ASSERT_GE(handle, 0);
    for (const std::int32_t input : {0x0D0A1104, 0x13031A7F, -1, 0x00FF0D00}) {
      PJStatus status{};
      EXPECT_EQ(world.library.SetInput(handle, input), kBeamlinkOk);
      EXPECT_EQ(world.library.GetStatus(handle, &status), kBeamlinkOk);
      EXPECT_EQ(status.Input, input);
    }
    EXPECT_EQ(open("COM3"), kOpenPortInUse);
    EXPECT_EQ(open("COM4"), kOpenBadPort);
  }
}

TEST(Serial, KnowsTheSpeedThatTheProgramSets) {
  const TempFolder folder;
  const std::filesystem::path path = folder / "projector";
  TerminalStatus made{};
  std::error_code error;
  const auto terminal = PseudoTerminal::Create(path, made, error);
  ASSERT_TRUE(terminal) << error;
  const EnvironmentValue number("WARPLINE_COM5", path);
  for (const int speed : {4800, 9600, 19200, 38400}) {
    SerialStatus status{};
    const auto port = OpenSerialPort(5, speed, status);
    EXPECT_EQ(terminal->Speed(), speed);
  }
  EXPECT_EQ(LineTime(480, 4800), std::chrono::seconds(1));
  EXPECT_EQ(LineTime(1, 38400).count(), 260);
}

TEST(Serial, EndsTheLinkWhenThePortIsClosed) {
  SerialWorld world;
  PJRunningStatus running{};
  for (std::uint64_t round = 1; round <= 3; ++round) {
    const std::int32_t handle = world.library.Open(kSerialKind, "COM3", "4800", kBeamlinkBlocking);
    ASSERT_GE(handle, 0);
    EXPECT_EQ(world.library.GetRunningStatus(handle, &running), kBeamlinkOk);
    EXPECT_EQ(world.library.Close(handle), kBeamlinkOk);
    EXPECT_TRUE(ComesTrue([&] { return world.station.Snapshot().OpenLinks == 0; }))
        << "the link stays open";
    EXPECT_EQ(world.station.Snapshot().Links, round);
  }
}

// Who writes to a reader that never reads would wait for ten minutes.
TEST(Serial, StopsWritingToOneWhoDoesNotRead) {
  constexpr milliseconds kForever{600'000};
  const TempFolder folder;
  const EnvironmentValue port("WARPLINE_COM5", folder / "projector");
  NamedText reason;
  TerminalStatus made{};
  std::error_code error;
  const auto terminal = PseudoTerminal::Create(folder / "projector", made, error);
  const auto listener = Listener::Open({}, reason);
  ASSERT_TRUE(terminal && listener) << error << Said(reason);
  SerialStatus serial{};
  ConnectStatus tcp{};
  const auto silent_port = OpenSerialPort(5, 38400, serial);
  const auto silent_caller = ConnectTcp(listener->Where(), kForever, tcp);
  std::atomic<bool> stopping{false};
  const std::unique_ptr<Channel> lines[] = {std::make_unique<SerialLine>(*terminal, true, stopping),
                                            listener->Accept(kForever, stopping)};
  std::atomic<int> ended{0};
  std::list<std::jthread> writers;
  for (const auto& line : lines) {
    while (line->Write(Bytes(10'000), milliseconds(1)) == ChannelStatus::kOk) {
    }
    writers.emplace_back(
        [&] { ended += line->Write(Bytes(1), kForever) == ChannelStatus::kClosed; });
  }
  stopping = true;
  EXPECT_TRUE(ComesTrue([&] { return ended == 2; })) << ended;
}

TEST(Serial, CleansUpAndRespectsWhatIsThere) {
  SerialWorld world;
  EXPECT_TRUE(std::filesystem::is_symlink(world.path));
  Server second(world.station);
  NamedText reason;
  EXPECT_FALSE(second.OfferSerial(world.path, true, reason)) << "in use";
  world.server.Stop();
  EXPECT_FALSE(std::filesystem::exists(std::filesystem::symlink_status(world.path)));

  const std::filesystem::path file = world.folder.Write("file", "kept");
  EXPECT_FALSE(second.OfferSerial(file, true, reason));
  EXPECT_NE(Said(reason).find("Cannot make the serial device \"" + file.string() + "\": "),
            std::string::npos);
  EXPECT_EQ(TempFolder::Read(file), "kept");
  std::filesystem::create_symlink(world.folder / "gone", world.folder / "left");
  EXPECT_TRUE(second.OfferSerial(world.folder / "left", true, reason)) << Said(reason);
}

}  // namespace
}  // namespace warpline::sim
