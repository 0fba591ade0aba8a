#include <algorithm>
#include <optional>
#include <string>

#include "cli/verbs.h"
#include "picture/named_pictures.h"

// picture: a test picture as a PNG picture.

namespace warpline {
namespace {

std::string AllNames() {
  std::string names;
  for (const NamedPicture& picture : NamedPictures()) {
    names.append(names.empty() ? "" : ", ").append(picture.name);
  }
  return names;
}

}  // namespace

int RunPicture(const VerbInput& input, Session& session) {
  const std::optional<PanelSize> panel = input.Panel();
  if (!panel) return kExitUsage;
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
