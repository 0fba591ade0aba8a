#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "app/trial_lines.h"

// What the check of the connection found.

namespace warpline {

enum class CheckGroup { kProgram, kLibraries, kSettings, kProjector };

struct CheckRow {
  CheckGroup group = CheckGroup::kProgram;
  std::string step{};  // for programs: "version", "Beamlink.PJAnyCommand", "open"
  CheckState state = CheckState::kGood;
  std::optional<std::int64_t> milliseconds{};  // how long it took; nothing when nobody waited
  std::optional<int> code{};                   // of a failure of the link
  // In the language in force.
  std::string group_name{};
  std::string name{};
  std::string text{};
  std::string advice{};  // what to do next; empty when there is nothing to do
};

struct CheckVerdict {
  bool good = true;
  std::string text{};
  std::string advice{};
};

}  // namespace warpline
