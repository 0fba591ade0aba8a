#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <limits>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>

#include "platform/environment.h"
#include "platform/files.h"
#include "platform/serial_port.h"

namespace warpline {
namespace {

namespace fs = std::filesystem;

int PollTime(milliseconds time_out) {
  return static_cast<int>(
      std::min<milliseconds::rep>(time_out.count(), std::numeric_limits<int>::max()));
}

bool WouldWait() {
  return errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR;
}

// A terminal device, non-blocking; owns the descriptor.
class TerminalChannel : public Channel {
 public:
  explicit TerminalChannel(int descriptor) : descriptor_(descriptor) {}
  ~TerminalChannel() override { ::close(descriptor_); }
  TerminalChannel(const TerminalChannel&) = delete;
  TerminalChannel& operator=(const TerminalChannel&) = delete;

  int Descriptor() const { return descriptor_; }

  ReadResult Read(std::span<std::uint8_t> buffer, milliseconds time_out) override {
    pollfd entry{descriptor_, POLLIN, 0};
    const int ready = ::poll(&entry, 1, PollTime(time_out));
    if (ready == 0 || (ready < 0 && errno == EINTR)) return {ChannelStatus::kTimedOut, 0};
    if (ready < 0) return {ChannelStatus::kClosed, 0};
    const ssize_t count = ::read(descriptor_, buffer.data(), buffer.size());
    if (count > 0) return {ChannelStatus::kOk, static_cast<std::size_t>(count)};
    if (count < 0 && WouldWait()) return {ChannelStatus::kTimedOut, 0};
    return {ChannelStatus::kClosed, 0};
  }

  ChannelStatus Write(ByteView bytes, milliseconds time_out) override {
    const Clock::time_point deadline = Clock::now() + time_out;
    while (!bytes.empty()) {
      const ssize_t count = ::write(descriptor_, bytes.data(), bytes.size());
      if (count < 0 && !WouldWait()) return ChannelStatus::kClosed;
      if (count > 0) {
        bytes = bytes.subspan(static_cast<std::size_t>(count));
        continue;
      }
      if (Clock::now() >= deadline) return ChannelStatus::kTimedOut;
      pollfd entry{descriptor_, POLLOUT, 0};
      ::poll(&entry, 1, PollTime(Until(deadline)));
      if ((entry.revents & (POLLHUP | POLLERR)) != 0) return ChannelStatus::kClosed;
    }
    return ChannelStatus::kOk;
  }

 private:
  int descriptor_;
};

constexpr std::array<std::pair<int, speed_t>, 4> kSpeeds{
    {{4800, B4800}, {9600, B9600}, {19200, B19200}, {38400, B38400}}};

speed_t SpeedCode(int speed) {
  const auto* row = std::ranges::find(kSpeeds, speed, &std::pair<int, speed_t>::first);
  return row == kSpeeds.end() ? B38400 : row->second;
}

// Bytes pass as they are. False when the descriptor is no terminal.
bool MakeRaw(int descriptor, int speed) {
  termios settings{};
  if (::tcgetattr(descriptor, &settings) != 0) return false;
  ::cfmakeraw(&settings);
  settings.c_cflag |= CLOCAL | CREAD;
  settings.c_cflag &= ~static_cast<tcflag_t>(CSTOPB);
  settings.c_cc[VMIN] = 1;
  settings.c_cc[VTIME] = 0;
  ::cfsetispeed(&settings, SpeedCode(speed));
  ::cfsetospeed(&settings, SpeedCode(speed));
  return ::tcsetattr(descriptor, TCSANOW, &settings) == 0;
}

// Master of a new pseudo-terminal and its device's path; -1 when there is none.
int OpenMaster(std::string& device) {
  const int master = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
  if (master < 0) return -1;
  std::array<char, 256> name{};
  if (::grantpt(master) != 0 || ::unlockpt(master) != 0 ||
      ::ptsname_r(master, name.data(), name.size()) != 0) {
    ::close(master);
    return -1;
  }
  ::fcntl(master, F_SETFL, ::fcntl(master, F_GETFL) | O_NONBLOCK);
  device = name.data();
  return master;
}

// Opened once and closed again, the device tells from then on whether somebody has it open.
void ReadyDevice(const std::string& device) {
  const int descriptor = ::open(device.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
  if (descriptor < 0) return;
  MakeRaw(descriptor, 38400);
  ::close(descriptor);
}

class PosixPseudoTerminal : public PseudoTerminal {
 public:
  PosixPseudoTerminal(int master, std::string device, fs::path link)
      : line_(master), device_(std::move(device)), link_(std::move(link)) {}

  ~PosixPseudoTerminal() override {
    std::error_code ignored;
    if (fs::read_symlink(link_, ignored) == device_) fs::remove(link_, ignored);
  }

  bool WaitForPeer(milliseconds time_out) override {
    const Clock::time_point deadline = Clock::now() + time_out;
    while (!HasPeer()) {
      if (Clock::now() >= deadline) return false;
      // The system reports a missing peer at once and all the time, so there is nothing to wait on.
      std::this_thread::sleep_for(std::min(Until(deadline), milliseconds(5)));
    }
    return true;
  }

  // The master sees the settings that the program made on the device.
  int Speed() const override {
    termios settings{};
    if (::tcgetattr(line_.Descriptor(), &settings) != 0) return 0;
    const speed_t code = ::cfgetospeed(&settings);
    const auto* row = std::ranges::find(kSpeeds, code, &std::pair<int, speed_t>::second);
    return row == kSpeeds.end() ? 0 : row->first;
  }

  Channel& Line() override { return line_; }

 private:
  bool HasPeer() const {
    pollfd entry{line_.Descriptor(), POLLIN, 0};
    ::poll(&entry, 1, 0);
    return (entry.revents & POLLIN) != 0 || (entry.revents & POLLHUP) == 0;
  }

  TerminalChannel line_;
  std::string device_;
  fs::path link_;
};

// A link that a killed run left behind may go; anything else at that place stays.
bool MakeSymlink(const std::string& device, const fs::path& path, std::error_code& error) {
  if (fs::is_symlink(path, error) && !fs::exists(path, error)) fs::remove(path, error);
  fs::create_symlink(device, path, error);
  return !error;
}

}  // namespace

std::unique_ptr<Channel> OpenSerialPort(int number, int speed, SerialStatus& status) {
  status = SerialStatus::kNoPort;
  const std::string variable = "WARPLINE_COM" + std::to_string(number);
  const std::optional<std::string> device = EnvironmentVariable(variable.c_str());
  if (!device || device->empty()) return nullptr;
  const int descriptor = ::open(device->c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
  if (descriptor < 0) {
    if (errno == EBUSY) status = SerialStatus::kInUse;
    return nullptr;
  }
  auto channel = std::make_unique<TerminalChannel>(descriptor);
  if (::flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
    status = SerialStatus::kInUse;
    return nullptr;
  }
  if (!MakeRaw(descriptor, speed)) return nullptr;
  ::tcflush(descriptor, TCIOFLUSH);
  status = SerialStatus::kOk;
  return channel;
}

std::unique_ptr<PseudoTerminal> PseudoTerminal::Create(const fs::path& path, TerminalStatus& status,
                                                       std::error_code& error) {
  std::string device;
  const int master = OpenMaster(device);
  status = TerminalStatus::kNone;
  if (master < 0) return nullptr;
  ReadyDevice(device);
  auto terminal = std::make_unique<PosixPseudoTerminal>(master, device, path);
  status = TerminalStatus::kNoLink;
  if (!MakeSymlink(device, path, error)) return nullptr;
  status = TerminalStatus::kOk;
  return terminal;
}

}  // namespace warpline
