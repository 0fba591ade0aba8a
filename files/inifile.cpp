#include "files/inifile.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <limits>
#include <system_error>
#include <type_traits>
#include <variant>

#include "core/conversions.h"

namespace warpline {
namespace {

constexpr std::string_view kSection = "[Warpline Tool 3.0]";

using SettingsMember =
    std::variant<std::int16_t Settings::*, std::int32_t Settings::*, std::string Settings::*>;

// What a malformed number becomes: the value of a fresh record, or of the one that is read into.
enum class Fallback { kDefault, kCaller };

// One key of the file. Its default is the value of a fresh record. Numbers are accepted from
// minimum to maximum; of a text minimum is the least length. The comments are the lines above it.
struct SettingsKey {
  std::string_view key;
  SettingsMember member;
  std::int32_t minimum;
  std::int32_t maximum;
  std::string_view comments;  // one line after another, each ended by a line feed
  Fallback fallback = Fallback::kDefault;
};

constexpr std::int32_t kLowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kHighest = std::numeric_limits<std::int32_t>::max();

constexpr std::string_view kNoYes = ";0:No\n;1:Yes\n";
constexpr std::string_view kComPorts =
    ";0:COM1\n;1:COM2\n;2:COM3\n;3:COM4\n;4:COM5\n;5:COM6\n;6:COM7\n;7:COM8\n";
constexpr std::string_view kComSpeeds = ";0:4800bps\n;1:9600bps\n;2:19200bps\n;3:38400bps\n";
constexpr std::string_view kUsbPorts =
    ";0:USB1\n;1:USB2\n;2:USB3\n;3:USB4\n;4:USB5\n;5:USB6\n;6:USB7\n;7:USB8\n";

// In the order of the file. The default of the window's position is known to the caller alone.
constexpr std::array<SettingsKey, 16> kSettingsKeys{{
    {"DemoMode", &Settings::DemoMode, 0, 1, ";0:NormalMode\n;1:DemoMode\n"},
    {"ConnectDevice", &Settings::ConnectDevice, 0, 2, ";0:Serial\n;1:LAN\n;2:USB\n"},
    {"SerialTimeOut", &Settings::SerialTimeOut, kMinTimeOutMs, kMaxTimeOutMs, ""},
    {"LANTimeOut", &Settings::LANTimeOut, kMinTimeOutMs, kMaxTimeOutMs, ""},
    {"USBTimeOut", &Settings::USBTimeOut, kMinTimeOutMs, kMaxTimeOutMs, ""},
    {"ComPort", &Settings::ComPort, 0, kPortCount - 1, kComPorts},
    {"ComSpeed", &Settings::ComSpeed, 0, 3, kComSpeeds},
    {"IPAddress", &Settings::IPAddress, 0, kHighest, ""},
    {"LANPort", &Settings::LANPort, 1, kHighest, ""},
    {"USBPort", &Settings::USBPort, 0, kPortCount - 1, kUsbPorts},
    {"AutoApply", &Settings::AutoApply, 0, 1, kNoYes},
    {"AutoApplyMenu", &Settings::AutoApplyMenu, 0, 1, kNoYes},
    {"TestPattern", &Settings::TestPattern, 0, 1, kNoYes},
    {"DialogPosX", &Settings::DialogPosX, kLowest, kHighest, ";Correction Dialog Position\n",
     Fallback::kCaller},
    {"DialogPosY", &Settings::DialogPosY, kLowest, kHighest, "", Fallback::kCaller},
    {"CommunicationMode", &Settings::CommunicationMode, 0, 1, ";0:SimpleMode\n;1:DetailedMode\n"},
}};

std::string_view TrimBlanks(std::string_view text) {
  const std::size_t begin = text.find_first_not_of(' ');
  if (begin == std::string_view::npos) return {};
  return text.substr(begin, text.find_last_not_of(' ') - begin + 1);
}

template <typename Integer>
void StoreNumber(const SettingsKey& key, std::string_view text, Integer Settings::*member,
                 const Settings& callers, Settings& settings) {
  const Integer fallback = key.fallback == Fallback::kCaller ? callers.*member : Settings().*member;
  const std::string cleaned = CleanIntegerText(text, std::to_string(fallback));
  Integer value = 0;
  const auto result = std::from_chars(cleaned.data(), cleaned.data() + cleaned.size(), value);
  const bool fits = result.ec == std::errc();
  if (fits && key.minimum <= value && value <= key.maximum) settings.*member = value;
}

void StoreText(const SettingsKey& key, std::string_view text, std::string Settings::*member,
               Settings& settings) {
  if (text.size() >= static_cast<std::size_t>(key.minimum)) settings.*member = text;
}

void StoreValue(const SettingsKey& key, std::string_view text, const Settings& callers,
                Settings& settings) {
  std::visit(
      [&](auto member) {
        if constexpr (std::is_same_v<decltype(member), std::string Settings::*>) {
          StoreText(key, text, member, settings);
        } else {
          StoreNumber(key, text, member, callers, settings);
        }
      },
      key.member);
}

std::string ValueText(const SettingsKey& key, const Settings& settings) {
  return std::visit(
      [&settings](auto member) -> std::string {
        if constexpr (std::is_same_v<decltype(member), std::string Settings::*>) {
          return settings.*member;
        } else {
          return std::to_string(settings.*member);
        }
      },
      key.member);
}

void AppendComments(std::string_view comments, std::vector<std::string>& lines) {
  while (!comments.empty()) {
    const std::size_t end = comments.find('\n');
    lines.emplace_back(comments.substr(0, end));
    comments.remove_prefix(end + 1);
  }
}

}  // namespace

void IniFile::ResetRead() {
  read_ = settings_;
  read_.SectionFound = false;
}

bool IniFile::ParseLine(std::string_view line) {
  if (line.find(kSection) != std::string_view::npos) read_.SectionFound = true;
  const std::size_t equals = line.find('=');
  if (line.starts_with(';') || equals == std::string_view::npos) return true;
  const std::string_view name = TrimBlanks(line.substr(0, equals));
  const auto row = std::find_if(kSettingsKeys.begin(), kSettingsKeys.end(),
                                [name](const SettingsKey& key) { return key.key == name; });
  if (row != kSettingsKeys.end()) {
    StoreValue(*row, TrimBlanks(line.substr(equals + 1)), settings_, read_);
  }
  return true;
}

bool IniFile::Write(std::vector<std::string>& lines) const {
  lines.emplace_back(kSection);
  for (const SettingsKey& key : kSettingsKeys) {
    AppendComments(key.comments, lines);
    lines.push_back(std::string(key.key) + "=" + ValueText(key, settings_));
  }
  return true;
}

}  // namespace warpline
