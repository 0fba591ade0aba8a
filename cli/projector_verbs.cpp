#include <functional>
#include <optional>

#include "cli/connection.h"
#include "cli/verbs.h"

// apply, store, initialize, mode: the tool's commands against the projector.

namespace warpline {

namespace {

// In demo mode the commands send nothing, which is worth a word.
int RunOnProjector(const VerbInput& input, Session& session,
                   const std::function<bool(ProjectorCommands&)>& work) {
  if (const std::optional<int> failed = BeginRecording(input, session)) return *failed;
  if (session.engine.global.Settings.DemoMode == 1) session.Tell(CliText::kDemoMode);
  const bool done = work(session.engine.commands);
  session.engine.recording.End();
  return done ? kExitOk : kExitFailed;
}

}  // namespace

int RunApply(const VerbInput& input, Session& session) {
  if (!ChooseConnection(input, session)) return kExitUsage;
  const std::filesystem::path path = input.Path("FILE");
  if (IsRegisterFile(path)) {
    if (!ReadRegisters(session, path)) return kExitFailed;
    return RunOnProjector(input, session,
                          [](ProjectorCommands& commands) { return commands.SendRegisters(); });
  }
  if (!ReadCorrection(session, path)) return kExitFailed;
  return RunOnProjector(input, session,
                        [](ProjectorCommands& commands) { return commands.Apply(); });
}

int RunStore(const VerbInput& input, Session& session) {
  if (!ChooseConnection(input, session)) return kExitUsage;
  const std::filesystem::path path = input.Path("FILE");
  if (IsRegisterFile(path)) {
    return session.UsageError(CliText::kCorrectionFileNeeded, {input.Text("FILE")});
  }
  if (!ReadCorrection(session, path)) return kExitFailed;
  return RunOnProjector(input, session,
                        [](ProjectorCommands& commands) { return commands.Store(); });
}

int RunInitialize(const VerbInput& input, Session& session) {
  if (!ChooseConnection(input, session)) return kExitUsage;
  return RunOnProjector(input, session,
                        [](ProjectorCommands& commands) { return commands.Initialize(); });
}

int RunMode(const VerbInput& input, Session& session) {
  const std::optional<int> mode = input.Number("MODE", 0, 2, 0);
  if (!mode || !ChooseConnection(input, session)) return kExitUsage;
  if (input.Has("MODE")) {
    const auto wanted = static_cast<std::int16_t>(*mode);
    return RunOnProjector(
        input, session, [wanted](ProjectorCommands& commands) { return commands.SetMode(wanted); });
  }
  return RunOnProjector(input, session, [&session](ProjectorCommands& commands) {
    const std::optional<std::int16_t> shown = commands.ReadMode();
    if (shown) session.out << *shown << '\n';
    return shown.has_value();
  });
}

}  // namespace warpline
