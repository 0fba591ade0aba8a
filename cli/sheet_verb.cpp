#include <chrono>
#include <optional>

#include "app/sheet_file.h"
#include "cli/connection.h"
#include "cli/verbs.h"

// sheet: the setup sheet of a correction.

namespace warpline {

int RunSheet(const VerbInput& input, Session& session) {
  if (!ChooseConnection(input, session)) return kExitUsage;
  if (!ReadCorrection(session, input.Path("FILE"))) return kExitFailed;
  if (const std::optional<int> failed = BeginRecording(input, session)) return *failed;
  SheetRequest request;
  request.note = input.Text("--note");
  request.ask_projector = input.Has("--lan") || input.Has("--serial") || input.Has("--usb");
  request.now = std::chrono::system_clock::now();
  request.sheet = input.Path("-o");
  const bool written = WriteSetupSheet(session.engine, request);
  session.engine.recording.End();
  return written ? kExitOk : kExitFailed;
}

}  // namespace warpline
