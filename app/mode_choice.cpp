#include "app/mode_choice.h"

namespace warpline {

ModeChoice::ModeChoice(LSSglobal& global, ProjectorCommands& commands)
    : global_(global),
      commands_(commands),
      in_force_(ModeInForce()),
      chosen_(global.ProjectorMode) {}

std::optional<std::int16_t> ModeChoice::ModeInForce() const {
  if (global_.OtherModeTold) return std::nullopt;
  return global_.ProjectorMode;
}

// In demo mode nothing is sent, and so the record of the projector's mode stays.
bool ModeChoice::Apply() {
  if (!Pending()) return true;
  const bool done = commands_.SetMode(chosen_);
  in_force_ = done ? chosen_ : ModeInForce();
  return done;
}

}  // namespace warpline
