#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include "app/command_sequences.h"
#include "core/LSSglobal.h"
#include "core/interfaces.h"
#include "core/messages.h"
#include "link/projector_link.h"

// What Apply, Store and Initialize do, without a window. Each runs between BeginBusy and EndBusy,
// opens the link and closes it again whatever happens, stops at the first failure (already shown),
// and returns true when everything went well. In demo mode nothing is opened and nothing is sent. A
// fault of the arithmetic becomes the run-time error report.

namespace warpline {

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
  // Finds out whether the projector takes commands, and which panel it has.
  bool CheckConnection();
  // Checks the connection and builds the registers for the panel that it reported.
  bool BuildForPanel();
  bool SendAll(const CommandSequence& sequence);
  // Records the mode when the projector took one.
  bool Send(CommandNumber number, std::int16_t mode);

  LSSglobal& global_;
  ProjectorLink& link_;
  const Messages& messages_;
  BusyIndicator& busy_;
};

}  // namespace warpline
