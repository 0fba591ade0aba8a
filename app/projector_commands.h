#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>

#include "core/LSSglobal.h"
#include "core/interfaces.h"
#include "core/messages.h"
#include "link/command_frames.h"
#include "link/projector_link.h"

// What Apply, Store and Initialize do, without a window. Each runs between BeginBusy and EndBusy,
// opens the link and closes it again whatever happens, stops at the first failure (already shown),
// and returns true when everything went well. In demo mode nothing is opened and nothing is sent. A
// fault of the arithmetic becomes the run-time error report.

namespace warpline {

// What each of them sends once the projector has been checked, in order.
inline constexpr std::array kApplySequence{
    kCommandPrepare,           kCommandClear,           kCommandHorizontalSet, kCommandVerticalSet,
    kCommandHorizontalStadium, kCommandVerticalStadium, kCommandShow};
inline constexpr std::array kStoreSequence{kCommandStore, kCommandSetMode};
inline constexpr std::array kInitializeSequence{kCommandPrepare, kCommandClear, kCommandShow};

// The picture mode that storing asks for.
inline constexpr std::int16_t kGeometricCorrectionMode = 1;

class ProjectorCommands {
 public:
  // All must outlive this object.
  ProjectorCommands(LSSglobal& global, ProjectorLink& link, const Messages& messages,
                    BusyIndicator& busy);

  // Builds both axes' registers for the panel that the projector reports and shows them. The second
  // copy of the parameters follows the current ones in any case.
  bool Apply();

  // As Apply up to the registers, then makes the projector keep the correction and asks for mode 1.
  bool Store();

  // Clears the projector's correction, then resets the parameters of both axes in the current
  // record and the second copy; curves, screen type and projection flags stay. The reset happens
  // even when sending failed.
  bool Initialize();

  // Sends the register texts of LSSglobal, as a register file brought them, with the same commands
  // and checks as Apply.
  bool SendRegisters();

  // The projector's picture mode (0 or 1), also kept in LSSglobal; nothing after a failure. 0 in
  // demo mode.
  std::optional<std::int16_t> ReadMode();

  // Sets the picture mode (0..2) and selects the input again.
  bool SetMode(std::int16_t mode);

 private:
  bool RunLinked(const std::function<bool()>& work);
  bool SendAll(std::span<const CommandNumber> commands);
  // Sends the command that sets a mode and records the mode when it was taken.
  bool SendMode(std::int16_t mode);
  // Checks the connection and builds the registers for the panel that it reported.
  bool BuildForPanel();

  LSSglobal& global_;
  ProjectorLink& link_;
  const Messages& messages_;
  BusyIndicator& busy_;
};

}  // namespace warpline
