#pragma once

#include <filesystem>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "core/texts.h"
#include "sim/line/socket.h"
#include "sim/station/station.h"

// The command line of the simulated projector.

namespace warpline::sim {

struct ProjectorOptions {
  StationSetup Station;
  std::optional<Endpoint> Listen;
  std::optional<std::filesystem::path> Serial;
  bool FastSerial = false;
  std::optional<Endpoint> Control;
  std::optional<std::filesystem::path> Record;  // at most one of these two
  std::optional<std::filesystem::path> Replay;
  std::optional<Endpoint> ReplayTo;  // with Replay alone: serve nobody, ask that projector
  bool LeftToChance = false;         // a fault depends on the seed
  bool Headless = false;
  warpline::Language Language = warpline::Language::kEnglish;
  bool Discovery = true;  // answer searches; only where it serves the LAN
};

// The options of the command line's words (the program's name left out). Nothing when the program
// is to end at once with that exit code: 0 after the help was printed to out, 2 after an error was.
std::optional<ProjectorOptions> ParseProjectorOptions(const std::vector<std::string>& words,
                                                      std::ostream& out, std::ostream& err,
                                                      int& exit_code);

}  // namespace warpline::sim
