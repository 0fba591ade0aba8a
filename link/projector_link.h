#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include "core/interfaces.h"
#include "core/messages.h"
#include "core/register_set.h"
#include "core/settings.h"
#include "link/beamlink.h"
#include "link/beamlink_calls.h"
#include "link/command_frames.h"

// The operations that the tool needs of the control library. Each returns true on success; a
// failure has already been shown to the user in exactly one message when it returns false. When the
// user cancels, an operation ends before its next call of the library, with false and no message.
// The link stays open after a failure: the caller closes it. What a projector told is returned, and
// kept nowhere else.

namespace warpline {

// The loaded library, or null when it cannot be loaded or lacks a required entry point. Asked once
// for every OpenLink.
using BeamlinkProvider = std::function<const BeamlinkFunctions*()>;

// Loads the library of that name from the program's own folder at the first call and keeps it.
BeamlinkProvider BeamlinkFromProgramFolder();

// A failure that was shown: what failed, and the library's result or the reply's error byte.
struct LinkFailure {
  MessageCategory category = MessageCategory::kReply;
  std::int32_t code = 0;
};

struct PanelAnswer {
  PanelSize size;     // 1024x768 when none was told
  bool told = false;  // the projector tells its panel
};

class ProjectorLink {
 public:
  // All must outlive this object. A link still open at the end is closed without a message.
  ProjectorLink(const Messages& messages, BusyIndicator& busy, BeamlinkProvider provider);
  ~ProjectorLink();
  ProjectorLink(const ProjectorLink&) = delete;
  ProjectorLink& operator=(const ProjectorLink&) = delete;

  // Somebody looks on at every call of the library from now on; null: nobody. Must outlive its use.
  void Observe(CallObserver* observer) { library_.Observe(observer); }

  // The library stands in for the maker's and reaches no real projector: as OpenLink found it, or
  // as somebody could tell before.
  void ExpectSimulators(bool only) { simulators_only_ = only; }
  bool ReachesSimulatorsOnly() const { return simulators_only_; }

  // By the connection of the settings, whose time-out holds until the next call.
  bool OpenLink(const Settings& settings);
  bool CloseLink();
  bool IsOpen() const { return handle_ >= 0; }
  std::int32_t LastOpenError() const { return last_open_error_; }

  // The projector answers, tells its panel and accepts the probe frame. Returns the panel, 1024x768
  // when it reports none.
  std::optional<PanelSize> CheckConnection();

  // The questions of CheckConnection one by one; Probe is true when the projector takes commands.
  std::optional<PJRunningStatus> AskRunning();
  std::optional<PanelAnswer> AskPanel();
  bool Probe();

  // The last failure since the link was opened, or tried to be.
  const std::optional<LinkFailure>& LastFailure() const { return failure_; }

  // One command of the table (0..12, 14, 16..21); mode is that of command 18. Command 21 asks for
  // the model class first, which decides about its frame. A refusal in the reply is a failure.
  // Other numbers throw Fault(kIndexOutOfRange).
  bool SendCommand(int number, const RegisterSet& registers, std::int16_t mode);

  // The projector's model class, 0 for one that knows none. Asked at most once while the link is
  // open.
  std::optional<ModelAnswer> AskModelClass();

  // What the link that was open last was told of it, if it asked.
  std::optional<ModelAnswer> AskedModelClass() const { return model_; }

  // The projector's picture mode as it tells it (0..255). An answer that tells no mode is a
  // failure.
  std::optional<std::int16_t> QueryMode();

  // Selects the input shown once more, so that a mode that was asked for takes effect.
  bool SwitchInput();

  // False, with message 198, when a text does not have its field's length; called before anything
  // is sent. Tables are checked against the panel when one is given, else only for whole bytes.
  static bool RegistersComplete(const RegisterSet& registers, std::optional<PanelSize> panel,
                                const Messages& messages);

 private:
  // One call of the library went through; else its failure is shown.
  bool Passed(MessageCategory category, std::int32_t result);
  bool SetTimeOut(std::int32_t milliseconds);
  // Shows it and keeps it.
  void Fail(MessageCategory category, std::int32_t code);
  bool CheckRunning();
  std::optional<PanelAnswer> ReadPanel();
  bool SendProbe();
  // The raw exchange alone; keeps the reply.
  std::int32_t SendRaw(const Frame& frame);
  // Time-out, running status and raw exchange.
  bool Exchange(const Frame& frame, std::int32_t time_out);
  // The last reply tells the mode; it then has no error byte.
  bool ReplyTellsMode() const;
  // The error byte of the last reply; nothing, as a receive error, when the reply is too short.
  std::optional<std::uint8_t> ReplyError();
  // The error byte of the last reply tells that the command was accepted.
  bool ReplyAccepted();
  bool SendStore(const RegisterSet& registers);

  const Messages& messages_;
  BusyIndicator& busy_;
  BeamlinkProvider provider_;
  BeamlinkCalls library_;
  bool simulators_only_ = false;
  std::int32_t handle_ = -1;
  std::int32_t time_out_ = 0;  // milliseconds
  std::int32_t last_open_error_ = 0;
  PJRunningStatus running_{};
  std::optional<LinkFailure> failure_;
  std::optional<ModelAnswer> model_;
  Frame reply_;
};

}  // namespace warpline
