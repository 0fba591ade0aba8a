#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "app/projector_commands.h"
#include "core/LSSglobal.h"
#include "core/message_numbers.h"

// The projector mode dialog without its window: which mode is in force, which one was chosen.

namespace warpline {

// The captions of the modes, message numbers; one that is not known counts as the last.
inline constexpr std::array kProjectorModes{kMsgNormalMode, kMsgGeometricMode, kMsgOtherMode};
inline constexpr int kProjectorModeCount = kProjectorModes.size();

class ModeChoice {
 public:
  // The mode in force is the one that LSSglobal holds, just read. When the projector told another
  // one than those that can be read, none is in force. Both must outlive this object.
  ModeChoice(LSSglobal& global, ProjectorCommands& commands);

  std::int16_t Chosen() const { return chosen_; }
  void Choose(std::int16_t mode) { chosen_ = mode; }  // 0..2

  // Another mode than the one in force was chosen (the Apply button).
  bool Pending() const { return chosen_ != in_force_; }

  // Sends the chosen mode, when it is another one. False after a failure, which was shown; the
  // choice is then pending still, unless the projector had taken the mode before.
  bool Apply();

 private:
  std::optional<std::int16_t> ModeInForce() const;

  LSSglobal& global_;
  ProjectorCommands& commands_;
  std::optional<std::int16_t> in_force_;
  std::int16_t chosen_;
};

}  // namespace warpline
