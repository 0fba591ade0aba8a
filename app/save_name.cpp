#include "app/save_name.h"

#include <algorithm>
#include <string>
#include <system_error>

#include "app/startup.h"
#include "files/formats.h"

namespace warpline {
namespace {

namespace fs = std::filesystem;

bool IsLetter(fs::path::value_type c) {
  return ('a' <= c && c <= 'z') || ('A' <= c && c <= 'Z');
}

// Three letters, as in ".wlt" and ".txt": what else follows a dot, as in "hall.v2", is a part of
// the name.
bool HasExtension(const fs::path& path) {
  const fs::path::string_type extension = path.extension().native();
  return extension.size() == 4 && std::all_of(extension.begin() + 1, extension.end(), IsLetter);
}

// Dialogs put the type behind a name that has an extension already: Windows because it does not
// know ".wlr", GTK because the extension of the offered name stays when another is typed over it.
bool IsDoubled(const fs::path& path, std::string_view type) {
  const fs::path named = path.stem();
  return TypeOf(path) == type &&
         (TypeOf(named) == type || (type == kTypeWlt && IsRegisterFile(named)));
}

fs::path SaveNameOf(const fs::path& path, std::string_view type) {
  if (IsDoubled(path, type)) return path.parent_path() / path.stem();
  if (HasExtension(path) || path.extension() == std::string(".").append(type)) return path;
  const bool ends_with_dot = path.native().back() == '.';
  fs::path completed = path;
  return completed += std::string(ends_with_dot ? "" : ".").append(type);
}

}  // namespace

std::filesystem::path DialogFolder(const LSSglobal& global,
                                   const std::filesystem::path& application_data) {
  if (global.CurrentFile.has_parent_path()) return global.CurrentFile.parent_path();
  return MakeDataFolder(application_data);
}

std::filesystem::path ChooseSaveName(
    const std::function<std::filesystem::path(const std::filesystem::path& offered)>& ask,
    const std::filesystem::path& offered, std::string_view type) {
  fs::path path = ask(offered);
  fs::path offered_again;
  while (!path.empty()) {
    fs::path name = SaveNameOf(path, type);
    std::error_code ignored;
    if (name == path || !fs::exists(name, ignored)) return name;
    // A dialog that doubles the extension each time cannot ask about the name itself.
    if (name == offered_again && IsDoubled(path, type)) return name;
    offered_again = name;
    path = ask(name);
  }
  return path;
}

}  // namespace warpline
