#include "link/projector_link.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <utility>

#include "core/fault.h"

namespace warpline {
namespace {

// The projector needs this much longer to take in the whole block.
constexpr std::int32_t kWholeBlockExtraMilliseconds = 7000;

// No reply of a projector comes near this length.
constexpr std::size_t kReplyCapacity = 4096;

// What replies say where.
constexpr std::size_t kShortestReply = 7;  // a header, a count, the error byte and a checksum
constexpr std::size_t kReplyCountStart = 3;
constexpr std::size_t kReplyErrorByte = 5;
constexpr std::size_t kReplyModeByte = 6;
constexpr std::size_t kReplyModelClassByte = 7;

// What the count of an answer says that tells the mode.
constexpr int kModeAnswerCount = 2;

struct OpenParameters {
  std::string first;
  std::string second;
};

OpenParameters ParametersOf(const Settings& settings) {
  if (settings.ConnectDevice == kSerial) {
    const auto speed = static_cast<std::size_t>(settings.ComSpeed);
    return {"COM" + std::to_string(settings.ComPort + 1),
            std::string(kSerialSpeeds[std::min(speed, kSerialSpeeds.size() - 1)])};
  }
  if (settings.ConnectDevice == kUsb) return {"USB" + std::to_string(settings.USBPort + 1), ""};
  return {settings.IPAddress, settings.LANPort};
}

using ParameterBuffer = std::array<char, kBeamlinkParameterSize>;

ParameterBuffer BufferOf(const std::string& text) {
  ParameterBuffer buffer{};
  text.copy(buffer.data(), buffer.size() - 1);
  return buffer;
}

// The digits that a field must have; nothing when any number of whole bytes will do.
std::optional<std::size_t> DigitsWanted(std::size_t field, Axis axis,
                                        std::optional<PanelSize> panel) {
  const std::size_t fixed = kRegisterFields[field].hex_digits;
  if (fixed > 0) return fixed;
  if (panel) return Corre2Digits(LineCount(*panel, axis));
  return std::nullopt;
}

bool FieldComplete(const std::string& text, std::size_t field, Axis axis,
                   std::optional<PanelSize> panel) {
  if (field == kCompDisp && text.empty()) return true;
  const auto wanted = DigitsWanted(field, axis, panel);
  return wanted ? text.size() == *wanted : text.size() % 2 == 0;
}

}  // namespace

ProjectorLink::ProjectorLink(const Messages& messages, BusyIndicator& busy,
                             BeamlinkProvider provider)
    : messages_(messages), busy_(busy), provider_(std::move(provider)) {}

ProjectorLink::~ProjectorLink() {
  if (IsOpen()) library_.PJCommDevClose(handle_);
}

bool ProjectorLink::OpenLink(const Settings& settings) {
  failure_.reset();
  const BeamlinkFunctions* const library = provider_();
  if (library == nullptr) {
    messages_.ShowText(kMsgLibraryMissing);
    return false;
  }
  library_.Use(*library);
  simulators_only_ = library->stands_in;
  const OpenParameters parameters = ParametersOf(settings);
  const ParameterBuffer first = BufferOf(parameters.first);
  const ParameterBuffer second = BufferOf(parameters.second);
  const std::int32_t result = library_.PJCommDevOpen(settings.ConnectDevice, first.data(),
                                                     second.data(), kBeamlinkBlocking);
  busy_.ProcessPendingEvents();
  if (result >= 0) {
    handle_ = result;
    time_out_ = TimeOutOf(settings);
    model_.reset();
    return true;
  }
  last_open_error_ = result;
  Fail(MessageCategory::kOpen, result);
  return false;
}

bool ProjectorLink::CloseLink() {
  if (!IsOpen()) return true;
  return Passed(MessageCategory::kClose, library_.PJCommDevClose(std::exchange(handle_, -1)));
}

std::optional<PanelSize> ProjectorLink::CheckConnection() {
  if (!SetTimeOut(time_out_) || !CheckRunning()) return std::nullopt;
  const auto panel = ReadPanel();
  if (!panel || !SendProbe()) return std::nullopt;
  return panel->size;
}

std::optional<PJRunningStatus> ProjectorLink::AskRunning() {
  if (!SetTimeOut(time_out_) || !CheckRunning()) return std::nullopt;
  return running_;
}

std::optional<PanelAnswer> ProjectorLink::AskPanel() {
  return SetTimeOut(time_out_) ? ReadPanel() : std::nullopt;
}

bool ProjectorLink::Probe() {
  return SetTimeOut(time_out_) && SendProbe();
}

bool ProjectorLink::SendCommand(int number, const RegisterSet& registers, std::int16_t mode) {
  if (number == kCommandStore) return SendStore(registers);
  const auto text = ComposeCommandText(number, registers, mode);
  if (!text) throw Fault(FaultCode::kIndexOutOfRange);
  if (!Exchange(FrameOf(*text), time_out_)) return false;
  const bool about_mode = number == kCommandSetMode || number == kCommandQueryMode;
  return (about_mode && ReplyTellsMode()) || ReplyAccepted();
}

std::optional<std::int16_t> ProjectorLink::QueryMode() {
  if (!SendCommand(kCommandQueryMode, {}, 0)) return std::nullopt;
  if (ReplyTellsMode()) return static_cast<std::int16_t>(reply_[kReplyModeByte]);
  Fail(MessageCategory::kExchange, kBeamlinkReceiveError);
  return std::nullopt;
}

bool ProjectorLink::SwitchInput() {
  if (!SetTimeOut(time_out_)) return false;
  PJStatus status{};
  return Passed(MessageCategory::kExchange, library_.PJGetStatus(handle_, &status)) &&
         Passed(MessageCategory::kExchange, library_.PJSetInput(handle_, status.Input));
}

bool ProjectorLink::RegistersComplete(const RegisterSet& registers, std::optional<PanelSize> panel,
                                      const Messages& messages) {
  for (const Axis axis : {kHorizontal, kVertical}) {
    for (std::size_t field = 0; field < kRegisterFieldCount; ++field) {
      if (FieldComplete(registers[axis][field], field, axis, panel)) continue;
      messages.ShowText(kMsgParameterLength);
      return false;
    }
  }
  return true;
}

bool ProjectorLink::Passed(MessageCategory category, std::int32_t result) {
  busy_.ProcessPendingEvents();
  if (result == kBeamlinkOk) return true;
  Fail(category, result);
  return false;
}

bool ProjectorLink::SetTimeOut(std::int32_t milliseconds) {
  if (busy_.Cancelled()) return false;
  // Every exchange begins here, so this is where a link that is not open shows.
  if (!IsOpen()) return Passed(MessageCategory::kExchange, kBeamlinkNotInitialized);
  return Passed(MessageCategory::kTimeOut, library_.PJCommDevSetAckTimeout(handle_, milliseconds));
}

bool ProjectorLink::CheckRunning() {
  if (busy_.Cancelled()) return false;
  running_ = {};
  return Passed(MessageCategory::kExchange, library_.PJGetRunningStatus(handle_, &running_));
}

std::optional<PanelAnswer> ProjectorLink::ReadPanel() {
  if (busy_.Cancelled()) return std::nullopt;
  PJPcViewerInformation information{};
  const std::int32_t result = library_.PJGetPcViewerInformation(handle_, &information);
  const bool hidden = result == kBeamlinkNoPanelInformation;
  if (!Passed(MessageCategory::kExchange, hidden ? kBeamlinkOk : result)) return std::nullopt;
  if (hidden) return PanelAnswer{kDefaultPanelSize, false};
  return PanelAnswer{{information.PanelWidth, information.PanelHeight}, true};
}

bool ProjectorLink::SendProbe() {
  if (!Passed(MessageCategory::kExchange, SendRaw(FrameOf(kProbeText)))) return false;
  const auto error = ReplyError();
  if (error && *error != 0) Fail(MessageCategory::kReply, *error);
  return error == 0;
}

void ProjectorLink::Fail(MessageCategory category, std::int32_t code) {
  failure_ = LinkFailure{category, code};
  messages_.ShowMessage(category, code);
}

std::int32_t ProjectorLink::SendRaw(const Frame& frame) {
  reply_.assign(kReplyCapacity, 0);
  auto length = static_cast<std::int32_t>(kReplyCapacity);
  const std::int32_t result = library_.PJAnyCommand(
      handle_, frame.data(), static_cast<std::int32_t>(frame.size()), reply_.data(), &length);
  reply_.resize(
      static_cast<std::size_t>(std::clamp(length, 0, static_cast<std::int32_t>(kReplyCapacity))));
  return result;
}

bool ProjectorLink::Exchange(const Frame& frame, std::int32_t time_out) {
  return SetTimeOut(time_out) && CheckRunning() && !busy_.Cancelled() &&
         Passed(MessageCategory::kExchange, SendRaw(frame));
}

bool ProjectorLink::ReplyTellsMode() const {
  if (reply_.size() < kShortestReply) return false;
  return (reply_[kReplyCountStart] << 8 | reply_[kReplyCountStart + 1]) == kModeAnswerCount;
}

std::optional<std::uint8_t> ProjectorLink::ReplyError() {
  if (reply_.size() >= kShortestReply) return reply_[kReplyErrorByte];
  Fail(MessageCategory::kExchange, kBeamlinkReceiveError);
  return std::nullopt;
}

bool ProjectorLink::ReplyAccepted() {
  const auto error = ReplyError();
  if (!error) return false;
  if (*error == 0) return true;
  Fail(MessageCategory::kReply, kReplyFailed);
  return false;
}

std::optional<ModelAnswer> ProjectorLink::AskModelClass() {
  if (model_) return model_;
  if (!SetTimeOut(time_out_) || !CheckRunning()) return std::nullopt;
  const std::int32_t result = SendRaw(FrameOf(kModelClassText));
  // A projector that knows no model classes keeps silent or answers with less.
  const bool silent = result == kBeamlinkNoResponse ||
                      (result == kBeamlinkOk && reply_.size() <= kReplyModelClassByte);
  if (!silent && !Passed(MessageCategory::kExchange, result)) return std::nullopt;
  model_ =
      silent ? ModelAnswer{} : ModelAnswer{reply_[kReplyModelClassByte], reply_[kReplyErrorByte]};
  return model_;
}

bool ProjectorLink::SendStore(const RegisterSet& registers) {
  const auto model = AskModelClass();
  if (!model) return false;
  const auto store = ComposeStore(registers, *model);
  if (!store) {
    Fail(MessageCategory::kReply, kReplyNotSupported);
    return false;
  }
  const std::int32_t extra = store->whole_block ? kWholeBlockExtraMilliseconds : 0;
  return Exchange(store->frame, time_out_ + extra) && ReplyAccepted();
}

}  // namespace warpline
