#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "app/command_sequences.h"
#include "app/held_messages.h"
#include "app/projector_record.h"
#include "core/LSSglobal.h"
#include "core/interfaces.h"
#include "core/messages.h"
#include "link/projector_link.h"

// What Apply, Store and Initialize do, without a window. Each runs between BeginBusy and EndBusy,
// opens the link and closes it again whatever happens, stops at the first failure, or before the
// next step when the user cancels, and returns true when everything went well. A failure is shown
// when the link is closed; when it left the projector without a correction, its box offers to send
// again. In demo mode nothing is opened and nothing is sent. A fault of the arithmetic becomes the
// run-time error report.

namespace warpline {

class ProjectorCommands {
 public:
  // All must outlive this object. held is what the messages are shown by.
  ProjectorCommands(LSSglobal& global, ProjectorLink& link, const Messages& messages,
                    HeldMessages& held, BusyIndicator& busy);

  // Called whenever the link was closed, before a failure is shown.
  void WatchLink(std::function<void()> closed) { closed_ = std::move(closed); }

  // Builds both axes' registers for the panel that the projector reports and shows them. The second
  // copy of the parameters follows those that were built in any case.
  bool Apply();

  // Apply that follows the user's hand: the work is of that kind, the model may change meanwhile,
  // and a failure that was told already is not told again but stands in RepeatedFailure().
  bool Follow();

  // As Apply up to the registers, then makes the projector keep the correction and asks for mode 1.
  // Projectors of class 5 and above keep what they show.
  bool Store();

  // As Store, but asks what to keep when the projector would keep something else than the
  // correction.
  bool AskAndStore();

  // Clears the projector's correction, then resets the parameters of both axes in the current
  // record and the second copy; curves, screen type and projection flags stay. The reset happens
  // even when sending failed.
  bool Initialize();

  // Clears the projector's correction and leaves the model; until something is sent, or fails to be
  // sent, the two are compared.
  bool ShowNone();
  bool Comparing() const { return comparing_; }

  // Sends the register texts of LSSglobal, as a register file brought them, with the same commands
  // and checks as Apply.
  bool SendRegisters();

  // The projector's picture mode, also kept in LSSglobal: 1, or 0 for every other one, which is
  // noted there too. Nothing after a failure. 0 in demo mode.
  std::optional<std::int16_t> ReadMode();

  // Asks for panel, model class and picture mode, and changes nothing. Nothing after a failure, and
  // in demo mode.
  std::optional<ProjectorReport> AskReport();

  // Sets the picture mode (0..2) and selects the input again.
  bool SetMode(std::int16_t mode);

  const ProjectorRecord& Record() const { return record_; }

  // The correction that was last sent, or tried to be sent; at first that of the start.
  const CorrectionData& Sent() const { return sent_; }

  // Another projector may be meant from now on.
  void ForgetProjector() {
    record_ = {};
    global_.PanelReported = false;
  }

  // What following failed with again; empty when it went well, or was never tried.
  const std::string& RepeatedFailure() const { return repeated_failure_; }

  // The last work was ended by the user.
  bool Stopped() const { return stopped_; }

 private:
  bool SendShown(BusyKind kind);
  bool ClearShown();
  // Work with the link open, once or until the user sends no more. steps: how many commands it
  // sends by SendAll.
  bool RunLinked(BusyKind kind, std::size_t steps, const std::function<bool()>& work);
  bool RunOnce(std::size_t steps, const std::function<bool()>& work);
  // Whether the user wants the work once more.
  bool TellFailures(const std::vector<UserMessage>& failures, BusyKind kind);
  // Finds out whether the projector takes commands, and which panel it has.
  bool CheckConnection();
  // Checks the connection and builds the registers for the panel that it reported.
  bool BuildForPanel();
  bool SendAll(const CommandSequence& sequence);
  bool ShowBuilt();
  bool KeepShown();
  bool StoreAsTold();
  void NoteShown(const ProjectorRecord& record);
  void NoteMode(std::int16_t told);
  // Records the mode when the projector took one.
  bool Send(CommandNumber number, std::int16_t mode);

  LSSglobal& global_;
  ProjectorLink& link_;
  const Messages& messages_;
  HeldMessages& held_;
  BusyIndicator& busy_;
  std::function<void()> closed_ = [] {};
  ProjectorRecord record_;
  CorrectionData sent_;
  std::string last_failure_;
  std::string repeated_failure_;
  int step_ = 0;  // of the work that runs
  int steps_ = 0;
  bool reached_ = false;  // which has found a projector that takes commands
  bool cleared_ = false;  // and it has taken the projector's correction away
  bool stopped_ = false;
  bool comparing_ = false;
};

}  // namespace warpline
