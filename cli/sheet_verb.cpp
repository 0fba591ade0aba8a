#include <chrono>

#include "app/sheet_file.h"
#include "cli/connection.h"
#include "cli/verbs.h"

// sheet: the setup sheet of a correction.

namespace warpline {

int RunSheet(const VerbInput& input, Session& session) {
  if (!ChooseConnection(input, session)) return kExitUsage;
  if (!ReadCorrection(session, input.Path("FILE"))) return kExitFailed;
  SheetRequest request;
  request.note = input.Text("--note");
  request.ask_projector = input.Has("--lan") || input.Has("--serial") || input.Has("--usb");
  request.now = std::chrono::system_clock::now();
  request.sheet = input.Path("-o");
  return WriteSetupSheet(session.engine, request) ? kExitOk : kExitFailed;
}

}  // namespace warpline
