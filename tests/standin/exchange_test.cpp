#include <gtest/gtest.h>

#include <list>
#include <memory>
#include <string>

#include "standin/exchange.h"
#include "tests/support/comes_true.h"
#include "tests/support/projector_server.h"
#include "tests/support/sim_hex.h"

namespace warpline::sim {
namespace {

constexpr milliseconds kEnough{5000};
constexpr milliseconds kShort{60};

std::unique_ptr<Channel> Connect(const ProjectorServer& server) {
  ConnectStatus status{};
  return ConnectTcp({Endpoint{}.Address, *PortNumber(server.Port())}, kEnough, status);
}

BeamlinkResult Send(Requester& requester, const char* frame, milliseconds time = kEnough) {
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
  ProjectorServer server;
  std::list<Requester> requesters;
  for (std::size_t i = 0; i < kMaxLinks; ++i) {
    EXPECT_EQ(Send(requesters.emplace_back(Connect(server), false), kProbe), kBeamlinkOk);
  }
  EXPECT_FALSE(Send(server));
  EXPECT_EQ(Send(requesters.front(), kProbe), kBeamlinkOk);
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
