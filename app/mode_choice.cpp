#include "app/mode_choice.h"

namespace warpline {

ModeChoice::ModeChoice(LSSglobal& global, ProjectorCommands& commands)
    : global_(global),
      commands_(commands),
      in_force_(global.ProjectorMode),
      chosen_(global.ProjectorMode) {}

// In demo mode nothing is sent, and so the record of the projector's mode stays.
bool ModeChoice::Apply() {
  if (!Pending()) return true;
  const bool done = commands_.SetMode(chosen_);
  in_force_ = done ? chosen_ : global_.ProjectorMode;
  return done;
}

}  // namespace warpline
