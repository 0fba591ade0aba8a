#include "standin/beamlink_standin.h"

#include <algorithm>
#include <iostream>
#include <optional>
#include <string_view>
#include <utility>

#include "platform/environment.h"
#include "sim/line/serial.h"
#include "sim/line/socket.h"
#include "standin/search_texts.h"

namespace warpline::sim {
namespace {

enum ConnectionKind : std::int32_t { kSerial = 0, kLan = 1, kUsb = 2 };

constexpr std::int32_t kLongestTimeOut = 3'600'000;
constexpr std::int32_t kLongestFrame = static_cast<std::int32_t>(kPayloadStart + kMaxPayload + 1);

// The text of a parameter, which need not be terminated when it fills its buffer.
std::string_view Parameter(const char* text) {
  if (text == nullptr) return {};
  const char* end = std::find(text, text + kBeamlinkParameterSize, '\0');
  return {text, static_cast<std::size_t>(end - text)};
}

// n of "COMn" or "USBn", 1..8.
std::optional<int> PortOf(std::string_view text, std::string_view name) {
  if (text.size() != name.size() + 1 || !text.starts_with(name)) return std::nullopt;
  const int number = text.back() - '0';
  if (number < 1 || number > kHighestPortNumber) return std::nullopt;
  return number;
}

// The maker's interface has no word for it, and knows no language.
void TellThatOthersAreNeverReached() {
  const Language language = LanguageOf(SystemLanguageIsJapanese() ? 1 : 0);
  std::cerr << SearchTextsOf(language)[SearchText::kSimulatorsOnly] << std::endl;
}

std::int32_t OpenResultOf(ConnectStatus status) {
  switch (status) {
    case ConnectStatus::kNoSockets:
      return kOpenWinSock;
    case ConnectStatus::kNoSocket:
      return kOpenSocket;
    case ConnectStatus::kWaitFailed:
      return kOpenSelect;
    default:
      return kOpenConnect;
  }
}

}  // namespace

std::int32_t BeamlinkStandin::Open(std::int32_t kind, const char* first, const char* second,
                                   std::int32_t mode) {
  if (mode != kBeamlinkBlocking) return kOpenInvalidDevice;
  switch (kind) {
    case kSerial:
      return OpenSerial(first, second);
    case kLan:
      return OpenLan(first, second);
    case kUsb:
      return OpenUsb(first);
    default:
      return kOpenInvalidDevice;
  }
}

std::int32_t BeamlinkStandin::OpenSerial(const char* first, const char* second) {
  const std::optional<int> port = PortOf(Parameter(first), "COM");
  const std::optional<std::uint16_t> speed = PortNumber(Parameter(second));
  if (!port || !speed || *speed == 0) return kOpenBadPort;
  SerialStatus status{};
  std::unique_ptr<Channel> channel = OpenSerialPort(*port, *speed, status);
  if (!channel) return status == SerialStatus::kInUse ? kOpenPortInUse : kOpenBadPort;
  return Keep(std::move(channel), true);
}

std::int32_t BeamlinkStandin::OpenLan(const char* first, const char* second) {
  const std::optional<std::uint32_t> address = LoopbackAddress(Parameter(first));
  const std::optional<std::uint16_t> port = PortNumber(Parameter(second));
  if (!address) {
    TellThatOthersAreNeverReached();
    return kOpenHost;
  }
  if (!port || *port == 0) return kOpenConnect;
  return OpenTcp({*address, *port});
}

std::int32_t BeamlinkStandin::OpenUsb(const char* first) {
  const std::optional<int> port = PortOf(Parameter(first), "USB");
  if (!port) return kOpenBadPort;
  return OpenTcp({Endpoint{}.Address, static_cast<std::uint16_t>(kUsbPortBase + *port)});
}

std::int32_t BeamlinkStandin::OpenTcp(const Endpoint& endpoint) {
  ConnectStatus status{};
  std::unique_ptr<Channel> channel = ConnectTcp(endpoint, kDefaultAckTimeOutMs, status);
  return channel ? Keep(std::move(channel), false) : OpenResultOf(status);
}

std::int32_t BeamlinkStandin::Keep(std::unique_ptr<Channel> channel, bool stale) {
  auto link = std::make_shared<OpenedLink>();
  link->requester = std::make_unique<Requester>(std::move(channel), stale);
  const std::lock_guard lock(mutex_);
  links_[next_handle_] = std::move(link);
  return next_handle_++;
}

std::int32_t BeamlinkStandin::Close(std::int32_t handle) {
  const std::lock_guard lock(mutex_);
  if (handle < 0 || handle >= next_handle_) return kCloseBadHandle;
  return links_.erase(handle) == 0 ? std::int32_t{kCloseAlreadyClosed} : kBeamlinkOk;
}

std::shared_ptr<BeamlinkStandin::OpenedLink> BeamlinkStandin::Find(std::int32_t handle) {
  const std::lock_guard lock(mutex_);
  const auto link = links_.find(handle);
  return link == links_.end() ? nullptr : link->second;
}

std::int32_t BeamlinkStandin::SetAckTimeout(std::int32_t handle, std::int32_t time_out) {
  const std::shared_ptr<OpenedLink> link = Find(handle);
  if (!link) return kBeamlinkBadHandle;
  if (time_out < 1 || time_out > kLongestTimeOut) return kBeamlinkCommandFailed;
  const std::lock_guard lock(link->mutex);
  link->time_out = milliseconds(time_out);
  return kBeamlinkOk;
}

std::int32_t BeamlinkStandin::AnyCommand(std::int32_t handle, const std::uint8_t* send,
                                         std::int32_t send_length, std::uint8_t* reply,
                                         std::int32_t* reply_length) {
  const std::shared_ptr<OpenedLink> link = Find(handle);
  if (!link) return kBeamlinkBadHandle;
  if (send == nullptr || send_length < 2 || send_length > kLongestFrame) return kBeamlinkSendError;
  if (reply == nullptr || reply_length == nullptr) return kBeamlinkReceiveError;
  const std::lock_guard lock(link->mutex);
  Bytes received;
  const BeamlinkResult result = link->requester->Exchange(
      ByteView(send, static_cast<std::size_t>(send_length)), received, link->time_out);
  const auto capacity = std::exchange(*reply_length, 0);
  if (result != kBeamlinkOk) return result;
  if (capacity < 0 || received.size() > static_cast<std::size_t>(capacity)) {
    return kBeamlinkReceiveError;
  }
  std::ranges::copy(received, reply);
  *reply_length = static_cast<std::int32_t>(received.size());
  return kBeamlinkOk;
}

// One of the library's own operations. The answer is what follows the error byte, of exactly that
// size; a refusal is kBeamlinkCommandFailed, "not supported" kBeamlinkNoPanelInformation.
std::int32_t BeamlinkStandin::Operation(std::int32_t handle, ByteView payload,
                                        std::size_t answer_size, Bytes& answer) {
  const std::shared_ptr<OpenedLink> link = Find(handle);
  if (!link) return kBeamlinkBadHandle;
  const std::lock_guard lock(link->mutex);
  Bytes reply;
  const BeamlinkResult result =
      link->requester->Exchange(MakeFrame(kLibraryHeader, payload), reply, link->time_out);
  if (result != kBeamlinkOk) return result;
  if (reply[kPayloadStart] == kNotSupported) return kBeamlinkNoPanelInformation;
  if (reply[kPayloadStart] != kAccepted) return kBeamlinkCommandFailed;
  if (reply.size() != kPayloadStart + 1 + answer_size + 1) return kBeamlinkReceiveError;
  answer.assign(reply.begin() + kPayloadStart + 1, reply.end() - 1);
  return kBeamlinkOk;
}

std::int32_t BeamlinkStandin::GetRunningStatus(std::int32_t handle, PJRunningStatus* status) {
  if (status == nullptr) return kBeamlinkCommandFailed;
  Bytes answer;
  const std::int32_t result = Operation(handle, Bytes{kRunningOperation}, 1, answer);
  if (result == kBeamlinkOk) status->Power = answer[0];
  return result;
}

std::int32_t BeamlinkStandin::GetStatus(std::int32_t handle, PJStatus* status) {
  if (status == nullptr) return kBeamlinkCommandFailed;
  Bytes answer;
  const std::int32_t result = Operation(handle, Bytes{kStatusOperation}, 5, answer);
  if (result != kBeamlinkOk) return result;
  *status = {answer[0], static_cast<std::int32_t>(ReadWord(answer, 1))};
  return result;
}

std::int32_t BeamlinkStandin::SetInput(std::int32_t handle, std::int32_t input) {
  Bytes payload{kInputOperation};
  AppendWord(payload, static_cast<std::uint32_t>(input));
  Bytes answer;
  return Operation(handle, payload, 0, answer);
}

std::int32_t BeamlinkStandin::GetPcViewerInformation(std::int32_t handle,
                                                     PJPcViewerInformation* information) {
  if (information == nullptr) return kBeamlinkCommandFailed;
  Bytes answer;
  const std::int32_t result = Operation(handle, Bytes{kPanelOperation}, 4, answer);
  if (result != kBeamlinkOk) return result;
  const std::uint32_t size = ReadWord(answer, 0);
  *information = {static_cast<std::int32_t>(size & 0xFFFF), static_cast<std::int32_t>(size >> 16)};
  return result;
}

}  // namespace warpline::sim
