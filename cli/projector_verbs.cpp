#include <functional>
#include <optional>
#include <string>

#include "cli/connection.h"
#include "cli/verbs.h"

// apply, store, initialize, mode: the tool's commands against the projector.

namespace warpline {

namespace {

// In demo mode the commands send nothing, which is worth a word. prints: work writes to standard
// output.
int RunOnProjector(const VerbInput& input, Session& session,
                   const std::function<bool(ProjectorCommands&)>& work, bool prints = false) {
  if (const std::optional<int> failed = BeginRecording(input, prints, session)) return *failed;
  const Settings& settings = session.engine.global.Settings;
  std::string target = TargetName(settings);
  session.report.Set("target", target);
  session.report.Set("demo", settings.DemoMode == 1);
  if (settings.DemoMode == 1) session.Tell(CliText::kDemoMode);
  const bool done =
      session.About([&target] { return target; }, [&] { return work(session.engine.commands); });
  session.engine.recording.End();
  return done ? kExitOk : kExitFailed;
}

// A projector that keeps what it shows may show something else than the file.
void TellWhatIsKept(Session& session) {
  const auto model = session.engine.link.AskedModelClass();
  if (!model) return;
  const bool keeps_shown = model->model_class >= kStoreCommandClass;
  session.report.Set("kept", keeps_shown ? "shown" : "file");
  if (keeps_shown) session.Tell(CliText::kStoreKeepsShown);
}

// It is no required argument, because the lines of --projectors may name files too.
bool FileIsGiven(const VerbInput& input, Session& session) {
  if (input.Has("FILE")) return true;
  session.UsageError(CliText::kMissingArgument, {"FILE"});
  return false;
}

bool SendAndKeep(ProjectorCommands& commands, Session& session) {
  if (!commands.Apply() || !commands.Store()) return false;
  session.report.Set("kept", "file");
  return true;
}

}  // namespace

int RunApply(const VerbInput& input, Session& session) {
  if (!FileIsGiven(input, session) || !ChooseConnection(input, session)) return kExitUsage;
  const std::filesystem::path path = input.Path("FILE");
  const bool keeps = input.Has("--store");
  session.report.Set("file", input.Text("FILE"));
  if (session.KindOf(path) == kTypeWlr) {
    if (keeps) return session.UsageError(CliText::kCorrectionFileNeeded, {input.Text("FILE")});
    if (!ReadRegisters(session, path)) return kExitFailed;
    return RunOnProjector(input, session,
                          [](ProjectorCommands& commands) { return commands.SendRegisters(); });
  }
  if (!ReadCorrection(session, path)) return kExitFailed;
  return RunOnProjector(input, session, [&](ProjectorCommands& commands) {
    return keeps ? SendAndKeep(commands, session) : commands.Apply();
  });
}

int RunStore(const VerbInput& input, Session& session) {
  if (!FileIsGiven(input, session) || !ChooseConnection(input, session)) return kExitUsage;
  const std::filesystem::path path = input.Path("FILE");
  session.report.Set("file", input.Text("FILE"));
  if (session.KindOf(path) == kTypeWlr) {
    return session.UsageError(CliText::kCorrectionFileNeeded, {input.Text("FILE")});
  }
  if (!ReadCorrection(session, path)) return kExitFailed;
  return RunOnProjector(input, session, [&session](ProjectorCommands& commands) {
    if (!commands.Store()) return false;
    TellWhatIsKept(session);
    return true;
  });
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
    session.report.Set("mode", *mode);
    return RunOnProjector(
        input, session, [wanted](ProjectorCommands& commands) { return commands.SetMode(wanted); });
  }
  const auto print = [&session](ProjectorCommands& commands) {
    const std::optional<std::int16_t> shown = commands.ReadMode();
    if (!shown) return false;
    session.report.Set("mode", *shown);
    if (!session.report.Wanted()) session.out << *shown << '\n';
    return true;
  };
  return RunOnProjector(input, session, print, true);
}

}  // namespace warpline
