
#include <algorithm>
#include <atomic>
#include <list>
#include <thread>

#include "standin/beamlink_standin.h"
#include "standin/exchange.h"
#include "tests/support/comes_true.h"
#include "tests/support/projector_server.h"
#include "tests/support/sim_hex.h"

namespace warpline::sim {
namespace {

constexpr std::int32_t kShortTimeOut = 200;
constexpr std::int32_t kLongTimeOut = 20000;
constexpr milliseconds kLong{kLongTimeOut};
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
struct ScriptedPeer {
  std::string Port() const { return std::to_string(listener->Where().Port); }

  std::function<void(Channel&)> script;
  NamedText reason = {};
  std::unique_ptr<Listener> listener = Listener::Open({}, reason);
  const std::atomic<bool> stopping{false};
  std::jthread thread{[this] {
    const std::unique_ptr<Channel> channel = listener->Accept(kLong, stopping);
    if (channel) script(*channel);
  }};
};

void ReadSomething(Channel& channel) {
  Bytes buffer(4096);
  channel.Read(buffer, kLong);
}

void ReadUntilClosed(Channel& channel) {
  Bytes buffer(4096);
  while (channel.Read(buffer, kLong).Status == ChannelStatus::kOk) {
  }
}

TEST(Standin, OpensLoopbackAndNothingElse) {
  NamedText reason;
  const std::string free_port = std::to_string(Listener::Open({}, reason)->Where().Port);
  const std::tuple<const char*, std::int32_t, const char*, const char*, std::int32_t> cases[] = {
      {"nobody listens", 1, "127.0.0.1", free_port.c_str(), kOpenConnect},
      {"another machine", 1, "192.0.2.1", "7142", kOpenHost},
      {"a name", 1, "projector", "7142", kOpenHost},
      {"no address", 1, "", "7142", kOpenHost},
      {"256", 1, "127.0.0.256", "7142", kOpenHost},
      {"null", 1, nullptr, nullptr, kOpenHost},
      {"port 0", 1, "127.0.0.1", "0", kOpenConnect},
      {"port too high", 1, "127.0.0.1", "65536", kOpenConnect},
      {"USB9", 2, "USB9", "", kOpenBadPort},
      {"COM0", 0, "COM0", "9600", kOpenBadPort},
      {"COM8 is nowhere", 0, "COM8", "9600", kOpenBadPort},
      {"kind 3", 3, "127.0.0.1", "7142", kOpenInvalidDevice}};
  BeamlinkStandin library;
  for (const auto& [name, kind, first, second, result] : cases) {
    testing::internal::CaptureStderr();
    EXPECT_EQ(library.Open(kind, first, second, kBeamlinkBlocking), result) << name;
    EXPECT_EQ(testing::internal::GetCapturedStderr().empty(), result != kOpenHost) << name;
  }
}

TEST(Standin, KnowsItsHandles) {
  ProjectorServer server;
  Link link(server.Port());
  PJRunningStatus running{};
  EXPECT_EQ(link.library.Close(7), kCloseBadHandle);
  EXPECT_EQ(link.library.Close(-1), kCloseBadHandle);
  EXPECT_EQ(link.library.SetAckTimeout(link.handle, 0), kBeamlinkCommandFailed);
  EXPECT_EQ(link.library.GetRunningStatus(link.handle, &running), kBeamlinkOk);
  EXPECT_EQ(link.library.Close(link.handle), kBeamlinkOk);
  EXPECT_EQ(link.library.Close(link.handle), kCloseAlreadyClosed);
  EXPECT_EQ(link.library.SetAckTimeout(link.handle, 100), kBeamlinkBadHandle);
  EXPECT_EQ(link.library.GetRunningStatus(link.handle, &running), kBeamlinkBadHandle);
}

TEST(Standin, OffersTheLibrarysOperations) {
  ProjectorServer server({.Panel = {800, 600}});
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

  ProjectorServer silent_about_panel({.Panel = {800, 600}, .ReportsPanel = false});
  Link second(silent_about_panel.Port());
  EXPECT_EQ(second.library.GetPcViewerInformation(second.handle, &information),
            kBeamlinkNoPanelInformation);
}

TEST(Standin, ReportsEachFaultAndRecovers) {
  const std::tuple<const char*, std::int32_t, std::int32_t, const char*, bool> cases[] = {
      {"timeout", kShortTimeOut, kBeamlinkNoResponse, "", true},
      {"refuse", kLongTimeOut, kBeamlinkOk, kRefusedReply, true},
      {"short", kShortTimeOut, kBeamlinkReceiveError, "", true},
      {"long", kLongTimeOut, kBeamlinkReceiveError, "", true},
      {"checksum", kLongTimeOut, kBeamlinkReceiveError, "", true},
      {"late=50", kLongTimeOut, kBeamlinkOk, kAcceptedReply, true},
      {"late=600", kShortTimeOut, kBeamlinkNoResponse, "", true},
      {"slow", kLongTimeOut, kBeamlinkOk, kAcceptedReply, true},
      {"cut", kLongTimeOut, kBeamlinkReceiveError, "", false},
      {"cutmid", kLongTimeOut, kBeamlinkReceiveError, "", false}};
  for (const auto& [fault, time_out, result, reply, survives] : cases) {
    SCOPED_TRACE(fault);
    ProjectorServer server({}, {std::string("kind=0:") + fault, "kind=1:refuse"});
    Link link(server.Port(), time_out);
    EXPECT_EQ(link.Send(kClear), result);
    EXPECT_EQ(link.reply, reply);
    // The next reply is a refusal, so that an overdue acceptance would be noticed.
    link.SetTimeOut(kLongTimeOut);
    EXPECT_EQ(link.Send(kShow), survives ? kBeamlinkOk : kBeamlinkSendError);
    EXPECT_EQ(link.reply, survives ? kRefusedReply : "");
    EXPECT_EQ(link.library.Close(link.handle), kBeamlinkOk);
  }
}

TEST(Standin, SurvivesAnyPeer) {
  const auto sends = [](const char* hex) {
    return [hex](Channel& channel) {
      ReadSomething(channel);
      channel.Write(FromHex(hex), kLong);
      ReadUntilClosed(channel);
    };
  };
  const auto babbles = [](Channel& channel) {
    const Bytes babble(5000, 0x21);
    while (channel.Write(babble, kLong) == ChannelStatus::kOk) {
    }
  };
  const std::tuple<const char*, std::function<void(Channel&)>, std::vector<std::int32_t>> cases[] =
      {{"closes at once", [](Channel&) {}, {kBeamlinkSendError, kBeamlinkReceiveError}},
       {"answers another request", sends("21DE000002000001"), {kBeamlinkReceiveError}},
       {"announces a count of 0", sends("21DF00000000"), {kBeamlinkReceiveError}},
       {"announces far too much", sends("21DF00FFFF00"), {kBeamlinkReceiveError}},
       {"never stops", babbles, {kBeamlinkReceiveError, kBeamlinkNoResponse}}};
  for (const auto& [name, script, results] : cases) {
    SCOPED_TRACE(name);
    const ScriptedPeer peer{script};
    Link link(peer.Port(), kShortTimeOut);
    const std::int32_t result = link.Send(kClear);
    EXPECT_NE(std::ranges::find(results, result), results.end()) << result;
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
  NamedText reason;
  ASSERT_TRUE(server.Listen({Endpoint{}.Address, 7207}, reason)) << Said(reason);
  BeamlinkStandin library;
  const std::int32_t handle = library.Open(2, "USB7", "", kBeamlinkBlocking);
  PJRunningStatus running{};
  ASSERT_GE(handle, 0);
  EXPECT_EQ(library.GetRunningStatus(handle, &running), kBeamlinkOk);
  Server second(station);
  EXPECT_FALSE(second.Listen({Endpoint{}.Address, 7207}, reason));
  EXPECT_EQ(Said(reason), "Cannot listen on 127.0.0.1:7207; another program may use this port.");
}

TEST(Standin, LetsThreadsShareALink) {
  ProjectorServer server;
  Link link(server.Port());
  std::atomic<int> accepted{0};
  const auto ask = [&] {
    for (int round = 0; round < 25; ++round) {
      PJStatus status{};
      if (link.library.GetStatus(link.handle, &status) == kBeamlinkOk) ++accepted;
    }
  };
  for (std::jthread threads[4]; std::jthread & thread : threads) thread = std::jthread(ask);
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
  EXPECT_TRUE(ComesTrue([&] { return server.Snapshot().OpenLinks == 0; })) << "links stay open";
  server.Stop();
  BeamlinkStandin library;
  EXPECT_EQ(library.Open(kLanKind, "127.0.0.1", server.Port().c_str(), kBeamlinkBlocking),
            kOpenConnect);
}

std::unique_ptr<Channel> Connect(const ProjectorServer& server) {
  ConnectStatus status{};
  return ConnectTcp(server.Where(), kLong, status);
}

TEST(Server, DropsWhatFollowsARefusedFrame) {
  ProjectorServer server;
  const std::unique_ptr<Channel> channel = Connect(server);
  ASSERT_TRUE(channel);
  channel->Write(FromHex("01DF0000020000E301DF0000020100E3"), kLong);
  Bytes buffer(64);
  const ReadResult read = channel->Read(buffer, kLong);
  EXPECT_EQ(ToHex(ByteView(buffer).first(read.Count)), kRefusedReply);
  EXPECT_EQ(server.Snapshot().Count.Shows, 0u);
}

constexpr milliseconds kShort{60};

BeamlinkResult Send(Requester& requester, const char* frame, milliseconds time = kLong) {
  Bytes reply;
  return requester.Exchange(FromHex(frame), reply, time);
}

// Sends the frames over one link; false at the first that is not answered well.
bool Send(const ProjectorServer& server, std::initializer_list<const char*> frames = {kProbe}) {
  std::unique_ptr<Channel> channel = Connect(server);
  if (!channel) return false;
  Requester requester(std::move(channel), false);
  for (const char* frame : frames) {
    if (Send(requester, frame) != kBeamlinkOk) return false;
  }
  return true;
}

std::string Scroll(const ProjectorServer& server) {
  return server.Snapshot().Working[kHorizontal][kScroll];
}

TEST(LinkFaults, RefuseEveryCallerUntilCleared) {
  ProjectorServer server({}, {"always:refuselink"});
  EXPECT_FALSE(Connect(server)) << "from the start";
  server.SetFaults({});
  while (!Connect(server)) {
  }
  server.SetFaults({"always:refuselink"});
  EXPECT_TRUE(ComesTrue([&] { return !Connect(server); })) << "still listening";
  server.SetFaults({});
  EXPECT_TRUE(ComesTrue([&] { return Send(server); })) << "on the same port";
}

TEST(LinkFaults, TurnAwayTheCallersThatTheRuleMeans) {
  ProjectorServer server({}, {"nth=2:refuselink"});
  for (const bool served : {true, false, true}) EXPECT_EQ(Send(server), served);
}

TEST(LinkFaults, LeaveAHalfOpenLinkWithoutAnswer) {
  ProjectorServer server({}, {"once:halfopen"});
  Requester requester(Connect(server), false);
  EXPECT_EQ(Send(requester, kProbe, kShort), kBeamlinkNoResponse);
  EXPECT_EQ(Send(requester, kProbe, kShort), kBeamlinkNoResponse) << "still there";
  EXPECT_TRUE(Send(server));
}

TEST(LinkFaults, ServeASingleCallerAtATime) {
  ProjectorServer server({}, {"always:single"});
  Requester first(Connect(server), false);
  ASSERT_EQ(Send(first, kProbe), kBeamlinkOk);
  EXPECT_FALSE(Send(server));
  EXPECT_EQ(Send(first, kProbe), kBeamlinkOk);
  first = Requester(nullptr, false);
  EXPECT_TRUE(ComesTrue([&] { return Send(server); })) << "its place stays taken";
}

TEST(LinkFaults, AreNotNeededToTurnAwayTheSeventeenthCaller) {
  std::atomic<int> second{0};
  ProjectorServer server(
      StationSetup{.Now = [&] { return Clock::time_point(std::chrono::seconds(second)); }});
  std::list<Requester> requesters;
  for (std::size_t i = 0; i < kMaxLinks; ++i) {
    EXPECT_EQ(Send(requesters.emplace_back(Connect(server), false), kProbe), kBeamlinkOk);
  }
  Requester& busy = requesters.front();
  for (const int idle : {0, 29}) {
    second = idle;
    EXPECT_FALSE(Send(server)) << idle;
    EXPECT_EQ(Send(busy, kProbe), kBeamlinkOk);
  }
  second = 58;
  EXPECT_TRUE(ComesTrue([&] { return Send(server); })) << "idle callers keep their places";
  EXPECT_EQ(Send(busy, kProbe), kBeamlinkOk);

  server.SetFaults({"always:halfopen"});
  std::list<std::unique_ptr<Channel>> ignored;
  while (ignored.size() < kMaxLinks) ignored.push_back(Connect(server));
  server.SetFaults({});
  EXPECT_TRUE(ComesTrue([&] {
    second += 30;
    return Send(server);
  })) << "those that are ignored keep theirs";
}

TEST(LinkFaults, RestartLosesWhatWasOnlyApplied) {
  ProjectorServer server;
  Requester bystander(Connect(server), false);
  ASSERT_EQ(Send(bystander, kProbe), kBeamlinkOk);
  ASSERT_TRUE(Send(server, {kWriteScroll, kShow}));
  EXPECT_EQ(Scroll(server), "3344");
  server.SetFaults({"once:restart"});
  EXPECT_FALSE(Send(server));
  EXPECT_EQ(Scroll(server), "0000") << "applied, not stored";
  EXPECT_NE(Send(bystander, kProbe), kBeamlinkOk) << "its link is gone";
}

TEST(LinkFaults, ADuplicateReplyIsNotTakenForTheNext) {
  ProjectorServer server({}, {"once:duplicate"});
  Requester requester(Connect(server), false);
  Send(requester, kProbe);
  EXPECT_EQ(Send(requester, kWriteScroll), kBeamlinkOk);
  EXPECT_EQ(Send(requester, kShow), kBeamlinkOk);
  EXPECT_EQ(Scroll(server), "3344");
}

}  // namespace
}  // namespace warpline::sim
