#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/register_set.h"
#include "core/texts.h"
#include "sim/device/projector.h"

// The state file: one JSON object that shows what the projector holds, for people, scripts and
// tests. At start the stored set is read back from it.
//   panel         {width, height}, pixels
//   panel_reported, class, reply5, power ("on", "standby", "warming up", "cooling
//                 down"), mode, wished_mode (1 or null), input
//   working, stored   the register texts by name: {"h_panel_ext": "0000", ...}
//   line_scales   {horizontal: [...], vertical: [...]}, rebuilt from the working set; 32768 is full
//                 length; one number per panel row and per panel column
//   counters      {exchanges, refused, shows, stores, links}
//   session       {frames, bytes}: the tool's raw frames over the most recent link and their length
//                 in bytes; the control library's own operations are not counted
//   faults        the rules in force, as they were given
//   mismatches    while a recording is replayed: the last requests that it did not hold, in hex

namespace warpline::sim {

struct LinkTraffic {
  std::uint64_t Frames = 0;
  std::uint64_t Bytes = 0;
};

// What the file holds beside the projector's own state.
struct StateExtras {
  LinkTraffic LastTraffic;
  std::uint64_t Links = 0;
  bool ModeOneAsked = false;
  std::vector<std::string> Faults;
  std::optional<std::vector<std::string>> Mismatches;  // nothing: no recording is replayed
};

// "on", "standby", "warming up", "cooling down".
std::string_view PowerName(Power power);

std::string StateText(const SimulatedProjector& projector, const StateExtras& extras);

// The stored set of a state text, when it is one for that panel; else nothing, and the reason.
std::optional<RegisterSet> StoredSetOf(std::string_view text, PanelSize panel, NamedText& reason);

}  // namespace warpline::sim
