#pragma once

namespace warpline::sim {

// The system's wish that the program ends (SIGINT, SIGTERM; on Windows Ctrl+C, Ctrl+Break and the
// console being closed). Make it before any thread is started.
class StopSignal {
 public:
  StopSignal();

  // Returns when the wish has come.
  void Wait();
};

}  // namespace warpline::sim
