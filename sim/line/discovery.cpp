#include "sim/line/discovery.h"

#include <algorithm>
#include <array>
#include <map>
#include <random>
#include <utility>

#include "platform/environment.h"
#include "platform/sockets.h"

namespace warpline::sim {
namespace {

constexpr std::string_view kQuestionMark = "WLDQ";
constexpr std::string_view kAnswerMark = "WLDA";
constexpr std::uint8_t kVersion = 1;

// Where the fields stand.
constexpr std::size_t kVersionAt = 4;
constexpr std::size_t kNumberAt = 5;
constexpr std::size_t kQuestionSize = 9;
constexpr std::size_t kTcpPortAt = 9;
constexpr std::size_t kModelClassAt = 11;
constexpr std::size_t kPowerAt = 12;
constexpr std::size_t kSelectableAt = 13;
constexpr std::size_t kNameSizeAt = 14;
constexpr std::size_t kNameAt = 15;

// One byte more than any datagram of ours, so that a longer one shows.
using DatagramBuffer = std::array<std::uint8_t, kNameAt + kLongestDiscoveryName + 1>;

// A socket that is closed with its owner.
class DatagramSocket {
 public:
  DatagramSocket() : handle_(StartSockets() ? NewDatagramSocket() : kNoSocket) {}
  ~DatagramSocket() {
    if (handle_ != kNoSocket) CloseSocket(handle_);
  }
  DatagramSocket(const DatagramSocket&) = delete;
  DatagramSocket& operator=(const DatagramSocket&) = delete;
  SocketHandle get() const { return handle_; }
  SocketHandle Release() { return std::exchange(handle_, kNoSocket); }

 private:
  SocketHandle handle_;
};

Bytes Start(std::string_view mark, std::uint32_t number) {
  Bytes datagram(mark.begin(), mark.end());
  datagram.push_back(kVersion);
  AppendWord(datagram, number);
  return datagram;
}

bool Starts(ByteView datagram, std::string_view mark) {
  return datagram.size() >= kQuestionSize &&
         std::equal(mark.begin(), mark.end(), datagram.begin()) && datagram[kVersionAt] == kVersion;
}

bool IsPrintable(char character) {
  return character >= ' ' && character <= '~';
}

std::string CleanName(const std::string& name) {
  std::string clean = name.substr(0, kLongestDiscoveryName);
  std::replace_if(
      clean.begin(), clean.end(), [](char c) { return !IsPrintable(c); }, '?');
  return clean;
}

bool InRange(const DiscoveryRange& range, const Endpoint& from) {
  return from.Port == range.Port && from.Address >= range.First &&
         from.Address - range.First < range.Count;
}

}  // namespace

std::uint16_t DiscoveryPort() {
  const std::optional<std::string> text = EnvironmentVariable("WARPLINE_DISCOVERY_PORT");
  const std::optional<std::uint16_t> port = text ? PortNumber(*text) : std::nullopt;
  return port && *port > 0 ? *port : kDiscoveryPort;
}

Bytes MakeQuestion(std::uint32_t number) {
  return Start(kQuestionMark, number);
}

Bytes MakeAnswer(std::uint32_t number, const DiscoveryAnswer& answer) {
  const std::string name = CleanName(answer.Name);
  Bytes datagram = Start(kAnswerMark, number);
  datagram.push_back(static_cast<std::uint8_t>(answer.TcpPort & 255));
  datagram.push_back(static_cast<std::uint8_t>(answer.TcpPort >> 8));
  datagram.push_back(answer.ModelClass);
  datagram.push_back(answer.PowerState);
  datagram.push_back(answer.Selectable ? 1 : 0);
  datagram.push_back(static_cast<std::uint8_t>(name.size()));
  datagram.insert(datagram.end(), name.begin(), name.end());
  return datagram;
}

std::optional<std::uint32_t> ParseQuestion(ByteView datagram) {
  if (datagram.size() != kQuestionSize || !Starts(datagram, kQuestionMark)) return std::nullopt;
  return ReadWord(datagram, kNumberAt);
}

std::optional<DiscoveryAnswer> ParseAnswer(ByteView datagram, std::uint32_t number) {
  if (datagram.size() < kNameAt || !Starts(datagram, kAnswerMark)) return std::nullopt;
  if (ReadWord(datagram, kNumberAt) != number || datagram[kSelectableAt] > 1) return std::nullopt;
  const std::size_t name_size = datagram[kNameSizeAt];
  if (name_size > kLongestDiscoveryName || datagram.size() != kNameAt + name_size) {
    return std::nullopt;
  }
  const ByteView name = datagram.subspan(kNameAt);
  DiscoveryAnswer answer;
  answer.TcpPort = static_cast<std::uint16_t>(datagram[kTcpPortAt] | datagram[kTcpPortAt + 1] << 8);
  answer.ModelClass = datagram[kModelClassAt];
  answer.PowerState = datagram[kPowerAt];
  answer.Selectable = datagram[kSelectableAt] == 1;
  answer.Name.assign(name.begin(), name.end());
  if (!std::all_of(answer.Name.begin(), answer.Name.end(), IsPrintable)) return std::nullopt;
  return answer;
}

std::unique_ptr<DiscoveryResponder> DiscoveryResponder::Open(const Endpoint& place,
                                                             DiscoveryAnswer answer) {
  return Open(place, [answer = std::move(answer)] { return answer; });
}

std::unique_ptr<DiscoveryResponder> DiscoveryResponder::Open(
    const Endpoint& place, std::function<DiscoveryAnswer()> answer) {
  DatagramSocket socket;
  if (socket.get() == kNoSocket || !BindSocket(socket.get(), place)) return nullptr;
  std::unique_ptr<DiscoveryResponder> responder(new DiscoveryResponder(std::move(answer)));
  responder->where_ = {place.Address, BoundPort(socket.get())};
  responder->socket_ = socket.Release();
  responder->thread_ = std::thread([self = responder.get()] { self->Answer(); });
  return responder;
}

DiscoveryResponder::~DiscoveryResponder() {
  stopping_ = true;
  if (thread_.joinable()) thread_.join();
  if (socket_ != kNoSocket) CloseSocket(socket_);
}

void DiscoveryResponder::Answer() {
  DatagramBuffer buffer{};
  Endpoint from;
  while (!stopping_) {
    if (WaitForSocket(socket_, Direction::kRead, kStopLookMs) != WaitStatus::kReady) continue;
    const std::ptrdiff_t size = ReceiveDatagram(socket_, buffer, from);
    if (size < 0) continue;
    const auto number = ParseQuestion(ByteView(buffer).first(static_cast<std::size_t>(size)));
    if (number) SendDatagram(socket_, MakeAnswer(*number, answer_()), from);
  }
}

std::vector<DiscoveredProjector> DiscoverProjectors(const DiscoveryRange& range,
                                                    const std::atomic<bool>& stop) {
  const DatagramSocket socket;
  if (socket.get() == kNoSocket || !BindSocket(socket.get(), Endpoint{})) return {};
  const std::uint32_t number = std::random_device{}();
  for (std::uint32_t i = 0; i < range.Count; ++i) {
    SendDatagram(socket.get(), MakeQuestion(number), {range.First + i, range.Port});
  }
  std::map<std::uint32_t, DiscoveryAnswer> answers;
  const Clock::time_point deadline = Clock::now() + range.Time;
  DatagramBuffer buffer{};
  Endpoint from;
  while (!stop && answers.size() < range.Count && Clock::now() < deadline) {
    WaitForSocket(socket.get(), Direction::kRead, std::min(Until(deadline), kStopLookMs));
    const std::ptrdiff_t size = ReceiveDatagram(socket.get(), buffer, from);
    if (size < 0 || !InRange(range, from)) continue;
    const auto answer = ParseAnswer(ByteView(buffer).first(static_cast<std::size_t>(size)), number);
    if (answer) answers.emplace(from.Address, *answer);
  }
  std::vector<DiscoveredProjector> found;
  found.reserve(answers.size());
  for (const auto& [address, answer] : answers) found.push_back({address, answer});
  return found;
}

}  // namespace warpline::sim
