#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace warpline {

// How a process ended. code is its exit code, or what the system calls the reason of a crash.
struct ProcessEnd {
  bool crashed = false;
  std::uint32_t code = 0;
};

// A program that is run beside this one for what it writes to its standard output. Its standard
// input is empty, its standard error goes nowhere, and nobody is asked when it crashes. What ends
// this program by the keyboard ends it, too.
class ChildProcess {
 public:
  enum class Read { kBytes, kNothing, kEnd };

  ChildProcess() = default;
  ~ChildProcess();  // ends a program that still runs
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  // Words are UTF-8 and hold no quotation marks. False when it cannot be started. To be called
  // once.
  bool Start(const std::filesystem::path& program, const std::vector<std::string>& words);

  // Appends what it has written, or what it writes within the limit. kEnd: nothing more will come.
  Read ReadOutput(std::string& bytes, std::chrono::milliseconds limit);

  // Ends it without asking.
  void Kill();

  // Waits until it has ended. To be called once, behind a successful start.
  ProcessEnd Wait();

 private:
  std::intptr_t process_ = kNone;
  std::intptr_t output_ = kNone;
  // Windows: what ends it together with this program.
  [[maybe_unused]] std::intptr_t group_ = kNone;

  static constexpr std::intptr_t kNone = -1;
};

}  // namespace warpline
