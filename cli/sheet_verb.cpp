#include <chrono>
#include <optional>
#include <string>

#include "app/sheet_file.h"
#include "cli/connection.h"
#include "cli/verbs.h"

// sheet: the setup sheet of a correction.

namespace warpline {

namespace {

bool WriteSheet(const SheetRequest& request, Session& session) {
  if (request.sheet != kStandardName) return WriteSetupSheet(session.engine, request);
  const std::optional<std::string> page = SetupSheetPage(session.engine, request);
  return page && session.Write(request.sheet, [&page] { return *page; });
}

}  // namespace

int RunSheet(const VerbInput& input, Session& session) {
  if (!ChooseConnection(input, session)) return kExitUsage;
  if (!ReadCorrection(session, input.Path("FILE"))) return kExitFailed;
  if (input.Path("FILE") == kStandardName) session.engine.global.CurrentFile.clear();
  SheetRequest request;
  request.sheet = input.Path("-o");
  const bool prints = request.sheet == kStandardName;
  if (const std::optional<int> failed = BeginRecording(input, prints, session)) return *failed;
  request.note = input.Text("--note");
  request.ask_projector = input.Has("--lan") || input.Has("--serial") || input.Has("--usb");
  request.now = std::chrono::system_clock::now();
  const bool written = WriteSheet(request, session);
  session.engine.recording.End();
  return written ? kExitOk : kExitFailed;
}

}  // namespace warpline
