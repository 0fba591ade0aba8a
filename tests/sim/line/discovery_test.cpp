#include "sim/line/discovery.h"
#include "sim/station/announcement.h"

#include <gtest/gtest.h>

#include <thread>

#include "platform/sockets.h"
#include "tests/support/sim_hex.h"

namespace warpline::sim {
namespace {

constexpr std::uint32_t kFirst = 0x7F000001;  // 127.0.0.1
constexpr std::uint32_t kNumber = 0x12345678;
const std::atomic<bool> kNeverStop{false};

const DiscoveryAnswer kLeft{7142, 5, 1, true, "Left wall"};
constexpr const char* kLeftHex = "574C44410178563412E61B050101094C6566742077616C6C";

TEST(Discovery, DatagramsAreTheseBytes) {
  EXPECT_EQ(ToHex(MakeQuestion(kNumber)), "574C44510178563412");
  EXPECT_EQ(ToHex(MakeAnswer(kNumber, kLeft)), kLeftHex);
  EXPECT_EQ(ParseQuestion(FromHex("574C44510178563412")), kNumber);
  EXPECT_EQ(ParseAnswer(FromHex(kLeftHex), kNumber), kLeft);
  const DiscoveryAnswer nameless{65535, 255, 0, false, ""};
  EXPECT_EQ(ParseAnswer(MakeAnswer(0, nameless), 0), nameless);
  const Bytes odd = MakeAnswer(1, {1, 1, 1, true, "\x07\xE5" + std::string(40, 'n')});
  EXPECT_EQ(ParseAnswer(odd, 1)->Name, "??" + std::string(29, 'n'));
}

TEST(Discovery, RefusesWhatHasAnotherShape) {
  std::vector<std::tuple<std::string, Bytes>> rows{
      {"other mark", FromHex("574C44420178563412E61B05010100")},
      {"other version", FromHex("574C44410278563412E61B05010100")},
      {"other number", FromHex("574C44410178563413E61B05010100")},
      {"selectable 2", FromHex("574C44410178563412E61B05010200")},
      {"name short", FromHex("574C44410178563412E61B050101024C")},
      {"name long", FromHex("574C44410178563412E61B050101014C4C")},
      {"control character", FromHex("574C44410178563412E61B0501010109")},
      {"no ASCII", FromHex("574C44410178563412E61B05010101E5")},
      {"name of 255", FromHex("574C44410178563412E61B050101FF4C")},
      {"question too long", FromHex("574C4451017856341200")},
      {"question's version", FromHex("574C44510078563412")}};
  for (Bytes cut = FromHex(kLeftHex); !cut.empty();) {
    cut.pop_back();
    rows.emplace_back("cut to " + std::to_string(cut.size()), cut);
  }
  for (const auto& [name, datagram] : rows) {
    EXPECT_EQ(ParseAnswer(datagram, kNumber), std::nullopt) << name;
    EXPECT_EQ(ParseQuestion(datagram), std::nullopt) << name;
  }
}

// A socket of a test, at a loopback address.
class RawSocket {
 public:
  explicit RawSocket(const Endpoint& place)
      : handle_(StartSockets() ? NewDatagramSocket() : kNoSocket) {
    EXPECT_TRUE(BindSocket(handle_, place)) << TextOf(place);
  }
  ~RawSocket() { CloseSocket(handle_); }
  RawSocket(const RawSocket&) = delete;
  RawSocket& operator=(const RawSocket&) = delete;

  std::uint16_t Port() const { return BoundPort(handle_); }

  void Send(ByteView datagram, const Endpoint& to) { SendDatagram(handle_, datagram, to); }

  // The next datagram; empty when none comes.
  Bytes Receive(Endpoint& from) {
    Bytes buffer(2048);
    if (WaitForSocket(handle_, Direction::kRead, milliseconds(5000)) != WaitStatus::kReady) {
      return {};
    }
    const std::ptrdiff_t size = ReceiveDatagram(handle_, buffer, from);
    buffer.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
    return buffer;
  }

 private:
  SocketHandle handle_;
};

// What a projector answers searches with, at a port of an address.
std::unique_ptr<DiscoveryResponder> Responder(const Endpoint& place,
                                              const ProjectorSetup& projector) {
  auto responder = DiscoveryResponder::Open(place, [&projector, address = place.Address] {
    return AnswerOf(projector, {address, 7142});
  });
  EXPECT_TRUE(responder);
  return responder;
}

TEST(Discovery, FindsTheProjectorsOfTheRange) {
  ProjectorSetup projector{.Panel = {}, .ModelClass = 2};
  const ProjectorSetup plain{.Panel = {}, .ModelClass = 1};
  const auto second = Responder({kFirst + 1, 0}, projector);
  const std::uint16_t port = second->Where().Port;
  const auto third = Responder({kFirst + 2, port}, plain);
  const auto beyond = Responder({kFirst + 3, port}, projector);
  projector.PowerState = Power::kCoolingDown;
  const std::vector<DiscoveredProjector> expected{
      {kFirst + 1, {7142, 2, 3, true, "Projector 127.0.0.2:7142"}},
      {kFirst + 2, {7142, 1, 1, false, "Projector 127.0.0.3:7142"}}};
  const DiscoveryRange range{kFirst + 1, 2, port, milliseconds(600'000)};
  EXPECT_EQ(DiscoverProjectors(range, kNeverStop), expected) << "ends when all have answered";
  EXPECT_EQ(DiscoveryResponder::Open({kFirst + 1, port}, kLeft), nullptr) << "taken";
  const std::atomic<bool> stop{true};
  EXPECT_TRUE(DiscoverProjectors(range, stop).empty());
}

TEST(Discovery, IgnoresHostileAnswers) {
  RawSocket inside({kFirst + 1, 0});
  RawSocket last({kFirst + 2, inside.Port()});
  RawSocket outside({kFirst + 3, inside.Port()});
  RawSocket liar({kFirst + 1, 0});
  const DiscoveryRange range{kFirst + 1, 2, inside.Port(), milliseconds(600'000)};
  std::vector<DiscoveredProjector> found;
  std::jthread asking([&] { found = DiscoverProjectors(range, kNeverStop); });
  Endpoint asker;
  const std::optional<std::uint32_t> number = ParseQuestion(inside.Receive(asker));
  ASSERT_TRUE(number);
  const auto named = [&](const char* name) {
    return MakeAnswer(*number, {7142, 5, 1, true, name});
  };
  liar.Send(named("From another port"), asker);
  outside.Send(named("From an address that was not asked"), asker);
  Bytes padded = named("Padded");
  padded.resize(1500);
  for (const Bytes& datagram : {MakeAnswer(*number + 1, kLeft), MakeQuestion(*number), Bytes(),
                                Bytes(1500, 0x57), padded, named("First"), named("Second")}) {
    inside.Send(datagram, asker);
  }
  last.Send(named("Last"), asker);
  asking.join();
  ASSERT_EQ(found.size(), 2U) << "one address is one projector";
  EXPECT_EQ(found[0].Answer.Name, "First");
  EXPECT_EQ(found[1].Answer.Name, "Last");
}

TEST(Discovery, AnswersOnAfterHostileQuestions) {
  const auto responder = DiscoveryResponder::Open({kFirst + 1, 0}, kLeft);
  ASSERT_TRUE(responder);
  RawSocket asker({kFirst, 0});
  for (const char* hex : {"", "00", "574C4451", "574C445101785634", "574C4451017856341200"}) {
    asker.Send(FromHex(hex), responder->Where());
  }
  asker.Send(Bytes(8000, 0x57), responder->Where());
  asker.Send(MakeQuestion(kNumber), responder->Where());
  Endpoint from;
  EXPECT_EQ(ToHex(asker.Receive(from)), kLeftHex) << "the first answer";
  EXPECT_EQ(TextOf(from), TextOf(responder->Where()));
}

}  // namespace
}  // namespace warpline::sim
