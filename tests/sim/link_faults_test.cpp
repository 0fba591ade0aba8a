#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <string>

#include "sim/exchange.h"
#include "tests/sim/hex.h"
#include "tests/support/projector_server.h"

namespace warpline::sim {
namespace {

constexpr milliseconds kEnough{5000};
constexpr milliseconds kShort{60};
constexpr const char* kProbe = "01DF000000E0";
constexpr const char* kWriteScroll = "01DF00000608000200334467";
constexpr const char* kShow = "01DF0000020100E3";
constexpr const char* kStore = "01DF0000021200F4";

std::unique_ptr<Channel> Connect(const ProjectorServer& server) {
  ConnectStatus status{};
  const auto port = PortNumber(server.Port());
  return ConnectTcp({Endpoint{}.Address, *port}, kEnough, status);
}

BeamlinkResult Probe(std::unique_ptr<Channel> channel, milliseconds time = kEnough) {
  if (!channel) return kBeamlinkNotInitialized;
  Caller caller(std::move(channel), false);
  Bytes reply;
  return caller.Exchange(FromHex(kProbe), reply, time);
}

// Polls until a caller is (not) connected.
void WaitForListener(const ProjectorServer& server, bool there) {
  while ((Connect(server) != nullptr) != there) {
  }
}

TEST(LinkFaults, RefuseEveryCallerUntilCleared) {
  ProjectorServer server;
  server.SetFaults({"always:refuselink"});
  WaitForListener(server, false);
  server.SetFaults({});
  WaitForListener(server, true);
  EXPECT_EQ(Probe(Connect(server)), kBeamlinkOk) << "on the same port";
}

TEST(LinkFaults, TurnAwayTheCallersThatTheRuleMeans) {
  ProjectorServer server({}, {"nth=2:refuselink"});
  EXPECT_EQ(Probe(Connect(server)), kBeamlinkOk);
  EXPECT_NE(Probe(Connect(server)), kBeamlinkOk);
  EXPECT_EQ(Probe(Connect(server)), kBeamlinkOk);
}

TEST(LinkFaults, LeaveAHalfOpenLinkWithoutAnswer) {
  ProjectorServer server({}, {"once:halfopen"});
  auto half_open = Connect(server);
  ASSERT_TRUE(half_open);
  Caller caller(std::move(half_open), false);
  Bytes reply;
  EXPECT_EQ(caller.Exchange(FromHex(kProbe), reply, kShort), kBeamlinkNoResponse);
  EXPECT_EQ(caller.Exchange(FromHex(kProbe), reply, kShort), kBeamlinkNoResponse) << "still there";
  EXPECT_EQ(Probe(Connect(server)), kBeamlinkOk);
}

TEST(LinkFaults, ServeASingleCallerAtATime) {
  ProjectorServer server({}, {"always:single"});
  Caller first(Connect(server), false);
  Bytes reply;
  ASSERT_EQ(first.Exchange(FromHex(kProbe), reply, kEnough), kBeamlinkOk);
  EXPECT_NE(Probe(Connect(server)), kBeamlinkOk);
  EXPECT_EQ(first.Exchange(FromHex(kProbe), reply, kEnough), kBeamlinkOk);
  first = Caller(nullptr, false);
  while (server.Snapshot().OpenLinks > 0) {
  }
  EXPECT_EQ(Probe(Connect(server)), kBeamlinkOk);
}

// Sends the frames over one link; false at the first that is not answered well.
bool Send(const ProjectorServer& server, std::initializer_list<const char*> frames) {
  Caller caller(Connect(server), false);
  Bytes reply;
  for (const char* frame : frames) {
    if (caller.Exchange(FromHex(frame), reply, kEnough) != kBeamlinkOk) return false;
  }
  return true;
}

TEST(LinkFaults, RestartLosesWhatWasOnlyApplied) {
  ProjectorServer server;
  Caller bystander(Connect(server), false);
  Bytes reply;
  ASSERT_EQ(bystander.Exchange(FromHex(kProbe), reply, kEnough), kBeamlinkOk);

  ASSERT_TRUE(Send(server, {kWriteScroll, kShow}));
  EXPECT_EQ(server.Snapshot().Working[kHorizontal][kScroll], "3344");
  server.SetFaults({"once:restart"});
  EXPECT_FALSE(Send(server, {kProbe}));
  EXPECT_EQ(server.Snapshot().Working[kHorizontal][kScroll], "0000") << "applied, not stored";
  EXPECT_NE(bystander.Exchange(FromHex(kProbe), reply, kEnough), kBeamlinkOk) << "its link is gone";

  ASSERT_TRUE(Send(server, {kWriteScroll, kShow, kStore}));
  server.Station().Restart();
  EXPECT_EQ(server.Snapshot().Working[kHorizontal][kScroll], "3344") << "stored";
}

TEST(LinkFaults, UnkeptValuesAreAnsweredAndForgotten) {
  ProjectorServer server({}, {"kind=8:unkept", "kind=21:unkept"});
  ASSERT_TRUE(Send(server, {kWriteScroll, kShow}));
  EXPECT_EQ(server.Snapshot().Working[kHorizontal][kScroll], "0000");
  EXPECT_EQ(server.Snapshot().Count.Refused, 0u);
  ASSERT_TRUE(Send(server, {kStore}));
  EXPECT_EQ(server.Snapshot().Count.Stores, 0u);
}

TEST(LinkFaults, ADuplicateReplyIsNotTakenForTheNext) {
  ProjectorServer server({}, {"once:duplicate"});
  Caller caller(Connect(server), false);
  Bytes reply;
  caller.Exchange(FromHex(kProbe), reply, kEnough);
  EXPECT_EQ(caller.Exchange(FromHex(kWriteScroll), reply, kEnough), kBeamlinkOk);
  EXPECT_EQ(caller.Exchange(FromHex(kShow), reply, kEnough), kBeamlinkOk);
  EXPECT_EQ(server.Snapshot().Working[kHorizontal][kScroll], "3344");
}

}  // namespace
}  // namespace warpline::sim
