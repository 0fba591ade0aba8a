#include <algorithm>
#include <optional>
#include <string>
#include <system_error>

#include "cli/verbs.h"
#include "core/catalogue.h"
#include "picture/named_pictures.h"
#include "picture/photograph.h"
#include "platform/files.h"

// picture: a test picture as a PNG picture.

namespace warpline {
namespace {

constexpr const char* kOwn = "own";

std::string AllNames() {
  std::string names;
  for (const NamedPicture& picture : NamedPictures()) names.append(picture.name).append(", ");
  return names.append(kOwn);
}

// A picture of the user's, fitted into the panel.
int WriteOwn(const VerbInput& input, Session& session, PanelSize panel) {
  if (!input.Has("--image")) return session.UsageError(CliText::kMissingArgument, {"--image"});
  std::optional<RgbImage> image;
  const bool read = session.OnFile(input.Path("--image"), [&] {
    std::string bytes;
    const std::error_code error = session.Read(input.Path("--image"), bytes);
    NamedText reason;
    if (!error) image = ImageOfPhotograph(bytes, reason);
    if (image) return true;
    session.engine.messages.ShowSystemError(error ? SystemErrorText(error)
                                                  : TextOf(session.engine.global, reason));
    return false;
  });
  if (!read) return kExitFailed;
  const bool written = session.Write(input.Path("-o"), [&] {
    return PngOf(FittedPicture(*image, panel)).value_or(std::string());
  });
  return written ? kExitOk : kExitFailed;
}

}  // namespace

int RunPicture(const VerbInput& input, Session& session) {
  const std::optional<PanelSize> panel = input.Panel();
  if (!panel) return kExitUsage;
  if (input.Text("NAME") == kOwn) return WriteOwn(input, session, *panel);
  const auto pictures = NamedPictures();
  const auto picture = std::ranges::find(pictures, input.Text("NAME"), &NamedPicture::name);
  if (picture == pictures.end()) {
    return session.UsageError(CliText::kBadPicture, {input.Text("NAME"), AllNames()});
  }
  const bool written = session.Write(
      input.Path("-o"), [&] { return PngOf(picture->draw(*panel)).value_or(std::string()); });
  return written ? kExitOk : kExitFailed;
}

}  // namespace warpline
