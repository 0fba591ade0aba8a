#include <optional>
#include <string>
#include <system_error>

#include "cli/verbs.h"
#include "core/catalogue.h"
#include "fit/mark_finder.h"
#include "picture/photograph.h"
#include "platform/files.h"

// marks: where a photograph shows the marks.

namespace warpline {
namespace {

// False when the photograph cannot be read, or will not do, which has been said.
bool FindIn(const std::filesystem::path& path, PanelSize panel, Session& session,
            FoundMarks& found) {
  const Messages& messages = session.engine.messages;
  return session.OnFile(path, [&] {
    std::string bytes;
    if (const std::error_code error = session.Read(path, bytes)) {
      messages.ShowSystemError(SystemErrorText(error));
      return false;
    }
    NamedText reason;
    const std::optional<RgbImage> photo = ImageOfPhotograph(bytes, reason);
    if (photo) {
      found = FindMarks(*photo, panel);
      if (!found.Refusal) return true;
      reason = *found.Refusal;
    }
    messages.ShowSystemError(TextOf(session.engine.global, reason));
    return false;
  });
}

}  // namespace

int RunMarks(const VerbInput& input, Session& session) {
  const std::optional<PanelSize> panel = input.Panel();
  if (!panel) return kExitUsage;
  FoundMarks found;
  if (!FindIn(input.Path("PHOTO"), *panel, session, found)) return kExitFailed;
  for (const NamedText& warning : found.Warnings) {
    session.err << TextOf(session.engine.global, warning) << '\n';
  }
  const bool written = session.Write(input.Path("-o"), [&] { return MarksText(found.Found); });
  return written ? kExitOk : kExitFailed;
}

}  // namespace warpline
