#include <windows.h>

#include <algorithm>
#include <string>

#include "platform/serial_port.h"

namespace warpline {
namespace {

class SerialChannel : public Channel {
 public:
  explicit SerialChannel(HANDLE port) : port_(port) {}
  ~SerialChannel() override { ::CloseHandle(port_); }
  SerialChannel(const SerialChannel&) = delete;
  SerialChannel& operator=(const SerialChannel&) = delete;

  ReadResult Read(std::span<std::uint8_t> buffer, milliseconds time_out) override {
    if (!SetTimes(time_out, time_out)) return {ChannelStatus::kClosed, 0};
    DWORD count = 0;
    if (!::ReadFile(port_, buffer.data(), static_cast<DWORD>(buffer.size()), &count, nullptr)) {
      return {ChannelStatus::kClosed, 0};
    }
    return {count == 0 ? ChannelStatus::kTimedOut : ChannelStatus::kOk, count};
  }

  ChannelStatus Write(ByteView bytes, milliseconds time_out) override {
    if (!SetTimes(time_out, time_out)) return ChannelStatus::kClosed;
    DWORD count = 0;
    if (!::WriteFile(port_, bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr)) {
      return ChannelStatus::kClosed;
    }
    return count == bytes.size() ? ChannelStatus::kOk : ChannelStatus::kTimedOut;
  }

 private:
  // Both MAXDWORD with a finite constant: a read returns with the first bytes or after that time.
  bool SetTimes(milliseconds read, milliseconds write) {
    const auto clamped = [](milliseconds time, milliseconds::rep least) {
      return static_cast<DWORD>(std::clamp<milliseconds::rep>(time.count(), least, 3'600'000));
    };
    COMMTIMEOUTS times{};
    times.ReadIntervalTimeout = MAXDWORD;
    if (read.count() > 0) {
      times.ReadTotalTimeoutMultiplier = MAXDWORD;
      times.ReadTotalTimeoutConstant = clamped(read, 1);
    }
    times.WriteTotalTimeoutConstant = clamped(write, 1);
    return ::SetCommTimeouts(port_, &times) != 0;
  }

  HANDLE port_;
};

bool Configure(HANDLE port, int speed) {
  DCB settings{};
  settings.DCBlength = sizeof settings;
  if (!::GetCommState(port, &settings)) return false;
  settings.BaudRate = static_cast<DWORD>(speed);
  settings.ByteSize = 8;
  settings.Parity = NOPARITY;
  settings.StopBits = ONESTOPBIT;
  settings.fBinary = TRUE;
  settings.fOutX = FALSE;
  settings.fInX = FALSE;
  settings.fOutxCtsFlow = FALSE;
  settings.fOutxDsrFlow = FALSE;
  return ::SetCommState(port, &settings) != 0;
}

}  // namespace

std::unique_ptr<Channel> OpenSerialPort(int number, int speed, SerialStatus& status) {
  status = SerialStatus::kNoPort;
  const std::wstring name = L"\\\\.\\COM" + std::to_wstring(number);
  const HANDLE port = ::CreateFileW(name.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
  if (port == INVALID_HANDLE_VALUE) {
    if (::GetLastError() == ERROR_ACCESS_DENIED) status = SerialStatus::kInUse;
    return nullptr;
  }
  auto channel = std::make_unique<SerialChannel>(port);
  if (!Configure(port, speed)) return nullptr;
  ::PurgeComm(port, PURGE_RXCLEAR | PURGE_TXCLEAR);
  status = SerialStatus::kOk;
  return channel;
}

std::unique_ptr<PseudoTerminal> PseudoTerminal::Create(const std::filesystem::path&,
                                                       TerminalStatus& status, std::error_code&) {
  status = TerminalStatus::kUnknown;
  return nullptr;
}

}  // namespace warpline
