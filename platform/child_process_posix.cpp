#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <utility>

#include "platform/child_process.h"

namespace warpline {
namespace {

constexpr int kFirstOther = 3;  // behind the three standard files

// The program's standard files, and nothing else that this process has open.
class StandardFiles {
 public:
  explicit StandardFiles(int output) {
    ::posix_spawn_file_actions_init(&actions_);
    ::posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    ::posix_spawn_file_actions_adddup2(&actions_, output, STDOUT_FILENO);
    ::posix_spawn_file_actions_addopen(&actions_, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    ::posix_spawn_file_actions_addclosefrom_np(&actions_, kFirstOther);
  }
  ~StandardFiles() { ::posix_spawn_file_actions_destroy(&actions_); }
  StandardFiles(const StandardFiles&) = delete;
  StandardFiles& operator=(const StandardFiles&) = delete;

  const posix_spawn_file_actions_t* Actions() const { return &actions_; }

 private:
  posix_spawn_file_actions_t actions_{};
};

}  // namespace

ChildProcess::~ChildProcess() {
  if (process_ != kNone) {
    Kill();
    Wait();
  }
  if (output_ != kNone) ::close(static_cast<int>(output_));
}

bool ChildProcess::Start(const std::filesystem::path& program,
                         const std::vector<std::string>& words) {
  std::array<int, 2> pipe{};
  if (::pipe2(pipe.data(), O_CLOEXEC) != 0) return false;
  std::string name = program.string();
  std::vector<std::string> given = words;
  std::vector<char*> arguments{name.data()};
  for (std::string& word : given) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  const StandardFiles files(pipe[1]);
  pid_t child = 0;
  const int error =
      ::posix_spawn(&child, name.c_str(), files.Actions(), nullptr, arguments.data(), ::environ);
  ::close(pipe[1]);
  output_ = pipe[0];
  if (error == 0) process_ = child;
  return error == 0;
}

ChildProcess::Read ChildProcess::ReadOutput(std::string& bytes, std::chrono::milliseconds limit) {
  pollfd wanted{.fd = static_cast<int>(output_), .events = POLLIN, .revents = 0};
  if (::poll(&wanted, 1, static_cast<int>(limit.count())) <= 0) return Read::kNothing;
  std::array<char, 4096> buffer{};
  const ssize_t count = ::read(wanted.fd, buffer.data(), buffer.size());
  if (count <= 0) return Read::kEnd;
  bytes.append(buffer.data(), static_cast<std::size_t>(count));
  return Read::kBytes;
}

void ChildProcess::Kill() {
  ::kill(static_cast<pid_t>(process_), SIGKILL);
}

ProcessEnd ChildProcess::Wait() {
  int status = 0;
  ::waitpid(static_cast<pid_t>(std::exchange(process_, kNone)), &status, 0);
  if (WIFSIGNALED(status)) return {true, static_cast<std::uint32_t>(WTERMSIG(status))};
  return {false, static_cast<std::uint32_t>(WEXITSTATUS(status))};
}

}  // namespace warpline
