#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

// The settings record and its limits.

namespace warpline {

enum ConnectDevice : std::int16_t { kSerial = 0, kLan = 1, kUsb = 2 };

inline constexpr int kPortCount = 8;  // COM1..COM8, USB1..USB8
inline constexpr std::int32_t kMinTimeOutMs = 500;
inline constexpr std::int32_t kMaxTimeOutMs = 7000;

// In bit/s; ComSpeed is an index.
inline constexpr std::array<std::string_view, 4> kSerialSpeeds{"4800", "9600", "19200", "38400"};

// The TCP port that every projector listens on.
inline constexpr std::string_view kUsualLanPort = "7142";

struct Settings {
  std::int16_t DemoMode = 0;          // 0..1; 1: no projector is contacted
  std::int16_t ConnectDevice = kLan;  // 0..2
  std::int32_t SerialTimeOut = 3000;  // milliseconds, 500..7000
  std::int32_t LANTimeOut = 3000;     // milliseconds, 500..7000
  std::int32_t USBTimeOut = 3000;     // milliseconds, 500..7000
  std::int16_t ComPort = 0;           // 0..7: COM1..COM8
  std::int16_t ComSpeed = 3;          // 0..3: 4800, 9600, 19200, 38400 bit/s
  std::string IPAddress = "192.168.10.10";
  std::string LANPort = std::string(kUsualLanPort);  // never empty
  std::int16_t USBPort = 0;                          // 0..7: USB1..USB8
  std::int16_t AutoApply = 1;                        // 0..1: "Real Time"
  std::int16_t AutoApplyMenu = 0;                    // 0..1
  std::int16_t TestPattern = 1;                      // 0..1: the preview window is shown
  std::int32_t DialogPosX = 0;                       // main window, device units
  std::int32_t DialogPosY = 0;
  std::int16_t CommunicationMode = 0;  // 0 simple, 1 detailed
  bool SectionFound = false;           // the section line was met while reading; never written

  bool operator==(const Settings&) const = default;
};

// The built-in defaults; the window position is that of the main window at this moment.
Settings DefaultSettings(std::int32_t window_x = 0, std::int32_t window_y = 0);

// The acknowledge time-out, in milliseconds, of the connection kind in force.
std::int32_t TimeOutOf(const Settings& settings);

}  // namespace warpline
