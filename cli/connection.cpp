#include "cli/connection.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "app/startup.h"
#include "cli/verbs.h"
#include "core/conversions.h"
#include "core/settings.h"
#include "link/beamlink.h"
#include "platform/console.h"
#include "platform/environment.h"

namespace warpline {

namespace {

constexpr int kMaxTcpPort = 65535;
constexpr std::size_t kMaxAddressCharacters = kBeamlinkParameterSize - 1;

bool TakeLan(const VerbInput& input, Session& session) {
  const std::optional<LanAddress> address = LanAddressOf(input.Text("--lan"));
  if (!address) {
    session.UsageError(CliText::kBadLan, {input.Text("--lan")});
    return false;
  }
  Settings& settings = session.engine.global.Settings;
  settings.ConnectDevice = kLan;
  settings.IPAddress = address->address;
  settings.LANPort = address->port;
  return true;
}

bool TakeSerial(const VerbInput& input, Session& session) {
  const std::string& text = input.Text("--serial");
  const std::size_t colon = std::min(text.find(':'), text.size());
  const std::optional<int> port = WholeNumber<int>(text.substr(0, colon), 1, kPortCount);
  const std::string speed = text.substr(std::min(colon + 1, text.size()));
  for (std::size_t i = 0; i < kSerialSpeeds.size(); ++i) {
    if (speed != kSerialSpeeds[i] || !port) continue;
    Settings& settings = session.engine.global.Settings;
    settings.ConnectDevice = kSerial;
    settings.ComPort = static_cast<std::int16_t>(*port - 1);
    settings.ComSpeed = static_cast<std::int16_t>(i);
    return true;
  }
  session.UsageError(CliText::kBadSerial, {text});
  return false;
}

bool TakeUsb(const VerbInput& input, Session& session) {
  const std::optional<int> port = input.Number("--usb", 1, kPortCount, 1);
  if (!port) return false;
  session.engine.global.Settings.ConnectDevice = kUsb;
  session.engine.global.Settings.USBPort = static_cast<std::int16_t>(*port - 1);
  return true;
}

struct ConnectionRow {
  std::string_view option;
  bool (*take)(const VerbInput& input, Session& session);
};
constexpr std::array<ConnectionRow, 3> kConnections{{
    {"--lan", TakeLan},
    {"--serial", TakeSerial},
    {"--usb", TakeUsb},
}};

bool TakeTimeOut(const VerbInput& input, Session& session) {
  if (!input.Has("--timeout")) return true;
  const std::optional<int> time_out = input.Number("--timeout", kMinTimeOutMs, kMaxTimeOutMs, 0);
  if (!time_out) return false;
  Settings& settings = session.engine.global.Settings;
  settings.SerialTimeOut = settings.LANTimeOut = settings.USBTimeOut = *time_out;
  return true;
}

}  // namespace

bool ChooseConnection(const VerbInput& input, Session& session) {
  ReadSettings(session.engine.global, ApplicationDataFolder());
  const ConnectionRow* chosen = nullptr;
  for (const ConnectionRow& row : kConnections) {
    if (!input.Has(row.option)) continue;
    if (chosen != nullptr) {
      session.UsageError(CliText::kManyConnections);
      return false;
    }
    chosen = &row;
  }
  if (chosen != nullptr) {
    if (!chosen->take(input, session)) return false;
    session.engine.global.Settings.DemoMode = 0;
  }
  return TakeTimeOut(input, session);
}

std::optional<int> BeginRecording(const VerbInput& input, bool prints, Session& session) {
  const bool redacted = input.Has("--redact");
  if (!input.Has(kRecordOption)) {
    return redacted ? std::optional(session.UsageError(CliText::kRedactAlone)) : std::nullopt;
  }
  const std::filesystem::path file = input.Path(kRecordOption);
  if (file == kStandardName) {
    if (prints || session.report.Wanted()) return session.UsageError(CliText::kOutputTwice);
    MakeOutputBinary();
    session.engine.recording.BeginIn(session.out, file, redacted);
    return std::nullopt;
  }
  if (session.engine.recording.Begin(file, redacted)) return std::nullopt;
  return kExitFailed;
}

std::optional<LanAddress> LanAddressOf(const std::string& text) {
  const std::size_t colon = std::min(text.rfind(':'), text.size());
  const std::string port(colon == text.size() ? kUsualLanPort : text.substr(colon + 1));
  const bool has_address = colon > 0 && colon <= kMaxAddressCharacters;
  if (!has_address || !WholeNumber<int>(port, 1, kMaxTcpPort)) return std::nullopt;
  return LanAddress{text.substr(0, colon), port};
}

std::string TargetName(const Settings& settings) {
  if (settings.ConnectDevice == kSerial) return "COM" + std::to_string(settings.ComPort + 1);
  if (settings.ConnectDevice == kUsb) return "USB" + std::to_string(settings.USBPort + 1);
  return settings.IPAddress + ":" + settings.LANPort;
}

}  // namespace warpline
