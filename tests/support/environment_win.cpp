#include "tests/support/environment.h"

#include <windows.h>

#include <system_error>

#include "platform/files.h"

namespace warpline {
namespace {

std::filesystem::path SettingsFile() {
  return ApplicationDataFolder() / "Varnok Beamkit" / "Warpline Tool 3.0" / "WarplineTool.ini";
}

}  // namespace

void PutEnvironment(const char* name, const std::optional<std::string>& value) {
  ::SetEnvironmentVariableW(PathOf(name).c_str(), value ? PathOf(*value).c_str() : nullptr);
}

// The system alone says where the settings lie: the user's file is put aside.
OwnSettings::OwnSettings(const std::filesystem::path& folder) : aside_(folder / "aside.ini") {
  std::error_code none;
  std::filesystem::copy_file(SettingsFile(), aside_, none);
  std::filesystem::remove(SettingsFile(), none);
}

OwnSettings::~OwnSettings() {
  std::error_code none;
  std::filesystem::remove(SettingsFile(), none);
  std::filesystem::copy_file(aside_, SettingsFile(), none);
}

}  // namespace warpline
