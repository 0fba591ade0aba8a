#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "sim/beamlink_standin.h"
#include "tests/sim/hex.h"
#include "tests/support/projector_server.h"

namespace warpline::sim {
namespace {

constexpr const char* kClear = "01DF0000020000E2";
constexpr const char* kShow = "01DF0000020100E3";
constexpr const char* kAcceptedReply = "21DF0000010001";
constexpr const char* kRefusedReply = "21DF0000010203";
constexpr std::int32_t kShortTimeOut = 200;
constexpr std::int32_t kLongTimeOut = 20000;
constexpr std::int32_t kLanKind = 1;

// An open link of a stand-in of its own.
struct Link {
  explicit Link(const std::string& port, std::int32_t time_out = kLongTimeOut)
      : handle(library.Open(kLanKind, "127.0.0.1", port.c_str(), kBeamlinkBlocking)) {
    EXPECT_GE(handle, 0);
    SetTimeOut(time_out);
  }
  void SetTimeOut(std::int32_t time_out) {
    EXPECT_EQ(library.SetAckTimeout(handle, time_out), kBeamlinkOk);
  }
  std::int32_t Send(std::string_view hex) {
    const Bytes frame = FromHex(hex);
    Bytes buffer(64);
    auto length = static_cast<std::int32_t>(buffer.size());
    const std::int32_t result = library.AnyCommand(
        handle, frame.data(), static_cast<std::int32_t>(frame.size()), buffer.data(), &length);
    reply = ToHex(ByteView(buffer).first(static_cast<std::size_t>(length)));
    return result;
  }

  BeamlinkStandin library;
  std::int32_t handle;
  std::string reply;
};

// A peer that answers one connection by a script.
class ScriptedPeer {
 public:
  explicit ScriptedPeer(std::function<void(Channel&)> script) {
    std::string reason;
    listener_ = Listener::Open({}, reason);
    thread_ = std::thread([this, script = std::move(script)] {
      const std::unique_ptr<Channel> channel = listener_->Accept(milliseconds(kLongTimeOut));
      if (channel) script(*channel);
    });
  }
  ~ScriptedPeer() { thread_.join(); }
  std::string Port() const { return std::to_string(listener_->Where().Port); }

 private:
  std::unique_ptr<Listener> listener_;
  std::thread thread_;
};

void ReadSomething(Channel& channel) {
  Bytes buffer(4096);
  channel.Read(buffer, milliseconds(kLongTimeOut));
}

void ReadUntilClosed(Channel& channel) {
  Bytes buffer(4096);
  while (channel.Read(buffer, milliseconds(kLongTimeOut)).Status == ChannelStatus::kOk) {
  }
}

TEST(Standin, OpensLoopbackAndNothingElse) {
  std::string reason;
  std::string free_port;
  {
    const std::unique_ptr<Listener> listener = Listener::Open({}, reason);
    free_port = std::to_string(listener->Where().Port);
  }
  const struct {
    const char* name;
    std::int32_t kind;
    const char* first;
    const char* second;
    std::int32_t result;
  } cases[] = {
      {"nobody listens", 1, "127.0.0.1", free_port.c_str(), kOpenConnect},
      {"another machine", 1, "192.0.2.1", "7142", kOpenHost},
      {"a name", 1, "projector", "7142", kOpenHost},
      {"no address", 1, "", "7142", kOpenHost},
      {"five parts", 1, "127.0.0.1.1", "7142", kOpenHost},
      {"256", 1, "127.0.0.256", "7142", kOpenHost},
      {"null", 1, nullptr, nullptr, kOpenHost},
      {"port 0", 1, "127.0.0.1", "0", kOpenConnect},
      {"port too high", 1, "127.0.0.1", "65536", kOpenConnect},
      {"USB9", 2, "USB9", "", kOpenBadPort},
      {"USB", 2, "USB", "", kOpenBadPort},
      {"COM0", 0, "COM0", "9600", kOpenBadPort},
      {"COM8 is nowhere", 0, "COM8", "9600", kOpenBadPort},
      {"kind 3", 3, "127.0.0.1", "7142", kOpenInvalidDevice},
  };
  BeamlinkStandin library;
  for (const auto& row : cases) {
    EXPECT_EQ(library.Open(row.kind, row.first, row.second, kBeamlinkBlocking), row.result)
        << row.name;
  }
}

TEST(Standin, KnowsItsHandles) {
  ProjectorServer server;
  Link link(server.Port());
  Link other(server.Port());
  PJRunningStatus running{};
  EXPECT_EQ(link.library.Close(7), kCloseBadHandle);
  EXPECT_EQ(link.library.Close(-1), kCloseBadHandle);
  EXPECT_EQ(link.library.Close(link.handle), kBeamlinkOk);
  EXPECT_EQ(link.library.Close(link.handle), kCloseAlreadyClosed);
  EXPECT_EQ(link.library.SetAckTimeout(link.handle, 100), kBeamlinkBadHandle);
  EXPECT_EQ(link.library.GetRunningStatus(link.handle, &running), kBeamlinkBadHandle);
  EXPECT_EQ(other.library.SetAckTimeout(other.handle, 0), kBeamlinkCommandFailed);
  EXPECT_EQ(other.library.GetRunningStatus(other.handle, &running), kBeamlinkOk);
}

TEST(Standin, OffersTheLibrarysOperations) {
  ProjectorSetup setup;
  setup.Panel = {800, 600};
  ProjectorServer server(setup);
  Link link(server.Port());
  PJRunningStatus running{};
  PJStatus status{};
  PJPcViewerInformation information{};
  EXPECT_EQ(link.library.GetRunningStatus(link.handle, &running), kBeamlinkOk);
  EXPECT_EQ(running.Power, 1);
  EXPECT_EQ(link.library.SetInput(link.handle, -3), kBeamlinkOk);
  EXPECT_EQ(link.library.GetStatus(link.handle, &status), kBeamlinkOk);
  EXPECT_EQ(status.Input, -3);
  EXPECT_EQ(link.library.GetPcViewerInformation(link.handle, &information), kBeamlinkOk);
  EXPECT_EQ(information.PanelWidth, 800);
  EXPECT_EQ(information.PanelHeight, 600);
  server.SetFaults({"kind=status:refuse", "kind=panel:checksum"});
  EXPECT_EQ(link.library.GetStatus(link.handle, &status), kBeamlinkCommandFailed);
  EXPECT_EQ(link.library.GetPcViewerInformation(link.handle, &information), kBeamlinkReceiveError);

  setup.ReportsPanel = false;
  ProjectorServer silent_about_panel(setup);
  Link second(silent_about_panel.Port());
  EXPECT_EQ(second.library.GetPcViewerInformation(second.handle, &information),
            kBeamlinkNoPanelInformation);
}

TEST(Standin, ReportsEachFaultAndRecovers) {
  const struct {
    const char* fault;
    std::int32_t time_out;
    std::int32_t result;
    const char* reply;
    bool link_survives;
  } cases[] = {
      {"timeout", kShortTimeOut, kBeamlinkNoResponse, "", true},
      {"refuse", kLongTimeOut, kBeamlinkOk, kRefusedReply, true},
      {"short", kShortTimeOut, kBeamlinkReceiveError, "", true},
      {"long", kLongTimeOut, kBeamlinkReceiveError, "", true},
      {"checksum", kLongTimeOut, kBeamlinkReceiveError, "", true},
      {"late=50", kLongTimeOut, kBeamlinkOk, kAcceptedReply, true},
      {"late=600", kShortTimeOut, kBeamlinkNoResponse, "", true},
      {"slow", kLongTimeOut, kBeamlinkOk, kAcceptedReply, true},
      {"cut", kLongTimeOut, kBeamlinkReceiveError, "", false},
      {"cutmid", kLongTimeOut, kBeamlinkReceiveError, "", false},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.fault);
    ProjectorServer server({}, {std::string("kind=0:") + row.fault, "kind=1:refuse"});
    Link link(server.Port(), row.time_out);
    EXPECT_EQ(link.Send(kClear), row.result);
    EXPECT_EQ(link.reply, row.reply);
    // The next reply is a refusal, so that an overdue acceptance would be noticed.
    link.SetTimeOut(kLongTimeOut);
    EXPECT_EQ(link.Send(kShow), row.link_survives ? kBeamlinkOk : kBeamlinkSendError);
    EXPECT_EQ(link.reply, row.link_survives ? kRefusedReply : "");
    EXPECT_EQ(link.library.Close(link.handle), kBeamlinkOk);
  }
}

TEST(Standin, SurvivesAnyPeer) {
  const auto sends = [](const char* hex) {
    return [hex](Channel& channel) {
      ReadSomething(channel);
      channel.Write(FromHex(hex), milliseconds(kLongTimeOut));
      ReadUntilClosed(channel);
    };
  };
  const auto babbles = [](Channel& channel) {
    const Bytes babble(5000, 0x21);
    while (channel.Write(babble, milliseconds(kLongTimeOut)) == ChannelStatus::kOk) {
    }
  };
  const struct {
    const char* name;
    std::function<void(Channel&)> script;
    std::vector<std::int32_t> results;
  } cases[] = {
      {"closes at once", [](Channel&) {}, {kBeamlinkSendError, kBeamlinkReceiveError}},
      {"closes on the request", ReadSomething, {kBeamlinkReceiveError}},
      {"is silent", ReadUntilClosed, {kBeamlinkNoResponse}},
      {"stops in mid-reply", sends("21DF0000"), {kBeamlinkReceiveError}},
      {"answers another request", sends("21DE000002000001"), {kBeamlinkReceiveError}},
      {"announces a count of 0", sends("21DF00000000"), {kBeamlinkReceiveError}},
      {"announces far too much", sends("21DF00FFFF00"), {kBeamlinkReceiveError}},
      {"never stops", babbles, {kBeamlinkReceiveError, kBeamlinkNoResponse}},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.name);
    ScriptedPeer peer(row.script);
    Link link(peer.Port(), kShortTimeOut);
    const std::int32_t result = link.Send(kClear);
    EXPECT_NE(std::ranges::find(row.results, result), row.results.end()) << result;
    EXPECT_EQ(link.reply, "");
    EXPECT_NE(link.Send(kClear), kBeamlinkOk) << "and again";
    link.library.Close(link.handle);
  }
}

TEST(Standin, ReportsAReplyThatDoesNotFit) {
  ProjectorServer server;
  Link link(server.Port());
  const Bytes frame = FromHex(kClear);
  Bytes buffer(6, 0xAA);
  std::int32_t length = 6;
  EXPECT_EQ(link.library.AnyCommand(link.handle, frame.data(), 8, buffer.data(), &length),
            kBeamlinkReceiveError);
  EXPECT_EQ(buffer, Bytes(6, 0xAA));
  EXPECT_EQ(link.library.AnyCommand(link.handle, nullptr, 8, buffer.data(), &length),
            kBeamlinkSendError);
  EXPECT_EQ(link.library.AnyCommand(link.handle, frame.data(), 8, nullptr, nullptr),
            kBeamlinkReceiveError);
}

TEST(Standin, ServesUsbOnItsPort) {
  Station station({});
  Server server(station);
  std::string reason;
  ASSERT_TRUE(server.Listen({Endpoint{}.Address, 7207}, reason)) << reason;
  BeamlinkStandin library;
  const std::int32_t handle = library.Open(2, "USB7", "", kBeamlinkBlocking);
  PJRunningStatus running{};
  ASSERT_GE(handle, 0);
  EXPECT_EQ(library.GetRunningStatus(handle, &running), kBeamlinkOk);
  Server second(station);
  EXPECT_FALSE(second.Listen({Endpoint{}.Address, 7207}, reason));
  EXPECT_NE(reason.find("127.0.0.1:7207"), std::string::npos) << reason;
}

TEST(Standin, LetsThreadsShareALink) {
  ProjectorServer server;
  Link link(server.Port());
  std::atomic<int> accepted{0};
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([&] {
      for (int round = 0; round < 25; ++round) {
        PJStatus status{};
        if (link.library.GetStatus(link.handle, &status) == kBeamlinkOk) ++accepted;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(accepted, 100);
}

TEST(Server, ServesASecondLinkAndForgetsTheFirst) {
  ProjectorServer server;
  {
    Link first(server.Port());
    Link second(server.Port());
    EXPECT_EQ(first.Send(kClear), kBeamlinkOk);
    EXPECT_EQ(second.Send(kShow), kBeamlinkOk);
    EXPECT_EQ(server.Snapshot().OpenLinks, 2u);
    EXPECT_EQ(server.Snapshot().ToolFrames, std::vector<Bytes>{FromHex(kShow)});
  }
  while (server.Snapshot().OpenLinks > 0) std::this_thread::yield();
  server.Stop();
  BeamlinkStandin library;
  EXPECT_EQ(library.Open(kLanKind, "127.0.0.1", server.Port().c_str(), kBeamlinkBlocking),
            kOpenConnect);
}

TEST(Server, DropsWhatFollowsARefusedFrame) {
  ProjectorServer server;
  ConnectStatus status{};
  const Endpoint endpoint{Endpoint{}.Address, *PortNumber(server.Port())};
  const std::unique_ptr<Channel> channel = ConnectTcp(endpoint, milliseconds(kLongTimeOut), status);
  ASSERT_TRUE(channel);
  channel->Write(FromHex("01DF0000020000E3"
                         "01DF0000020100E3"),
                 milliseconds(kLongTimeOut));
  Bytes buffer(64);
  const ReadResult read = channel->Read(buffer, milliseconds(kLongTimeOut));
  EXPECT_EQ(ToHex(ByteView(buffer).first(read.Count)), kRefusedReply);
  EXPECT_EQ(server.Snapshot().Count.Shows, 0u);
}

}  // namespace
}  // namespace warpline::sim
