#pragma once

#include <string>

#include "app/engine.h"

// What the line at the foot of the main window says.

namespace warpline {

struct StatusLine {
  std::string link;    // how the projector is reached, "LAN 192.168.10.10", "USB1 (simulator)"
  std::string shown;   // what it shows, and whether it keeps that
  std::string note;    // what went wrong, or needs attention; often empty
  std::string detail;  // the note at length, when there is more to say
  bool retry = false;  // the note is a failure that following the hand has met again

  bool operator==(const StatusLine&) const = default;
};

// How the settings reach the projector.
std::string ConnectionText(const LSSglobal& global);

// In the language in force. In demo mode nothing is known of a projector. The least urgent note is
// where the projector cannot follow the model.
StatusLine StatusOf(const Engine& engine);

// What work says while it runs: step (1..steps) of steps, 0 for what comes before them.
std::string ProgressText(const LSSglobal& global, int step, int steps);

}  // namespace warpline
