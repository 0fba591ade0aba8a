#include "app/save_name.h"

#include <system_error>

#include "app/startup.h"

namespace warpline {
namespace {

// "name" and "name.".
bool LacksExtension(const std::filesystem::path& path) {
  return path.extension().native().size() <= 1;
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
  std::filesystem::path path = ask(offered);
  std::error_code ignored;
  while (!path.empty() && LacksExtension(path)) {
    path.replace_extension(type);
    if (!std::filesystem::exists(path, ignored)) break;
    path = ask(path);
  }
  return path;
}

}  // namespace warpline
