#pragma once

#include <chrono>

namespace warpline {

// The system's wish that the program ends (SIGINT, SIGTERM; on Windows Ctrl+C, Ctrl+Break and the
// console being closed). Make it before any thread is started.
class StopSignal {
 public:
  StopSignal();

  // Returns when the wish has come.
  void Wait();

  // True when the wish has come; waits that long for it. Once true, it is taken: ask no further.
  bool WaitFor(std::chrono::milliseconds time);
};

}  // namespace warpline
