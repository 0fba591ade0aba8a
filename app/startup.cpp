#include "app/startup.h"

#include <system_error>

#include "core/interfaces.h"
#include "files/LSSfile.h"

namespace warpline {
namespace {

// Nobody is told about a settings file that cannot be read, and why one cannot be written is less
// than which one.
class SilentDisplay : public MessageDisplay {
 public:
  std::size_t Show(const UserMessage&) override { return 0; }
};

std::filesystem::path SettingsFile(const std::filesystem::path& application_data) {
  return DataFolder(application_data) / kSettingsFileName;
}

}  // namespace

bool ReadSettings(LSSglobal& global, const std::filesystem::path& application_data,
                  std::int32_t window_x, std::int32_t window_y) {
  global.Settings = DefaultSettings(window_x, window_y);
  // Nothing waits for what a pipe or a device in its place would say.
  std::error_code ignored;
  if (!std::filesystem::is_regular_file(SettingsFile(application_data), ignored)) return false;
  SilentDisplay silent;
  const Messages no_messages(global, silent);
  LSSfile files(no_messages);
  files.Staging().Settings = global.Settings;
  if (!files.OpenDataFile(SettingsFile(application_data), kTypeIni)) return false;
  global.Settings = files.Staging().Settings;
  return true;
}

bool LoadSettings(LSSglobal& global, const std::filesystem::path& application_data,
                  std::int32_t window_x, std::int32_t window_y) {
  MakeDataFolder(application_data);
  return ReadSettings(global, application_data, window_x, window_y);
}

bool SaveSettings(LSSglobal& global, const Messages& messages,
                  const std::filesystem::path& application_data, std::int32_t window_x,
                  std::int32_t window_y) {
  global.Settings.DialogPosX = window_x;
  global.Settings.DialogPosY = window_y;
  MakeDataFolder(application_data);
  FileData data;
  data.Settings = global.Settings;
  SilentDisplay silent;
  const Messages no_messages(global, silent);
  const std::filesystem::path file = SettingsFile(application_data);
  if (LSSfile(no_messages).SaveDataFile(file, kTypeIni, data)) return true;
  messages.ShowFileText(kMsgIniSaveFailed, file);
  return false;
}

std::filesystem::path MakeDataFolder(const std::filesystem::path& application_data) {
  std::filesystem::path folder = DataFolder(application_data);
  std::error_code ignored;
  std::filesystem::create_directories(folder, ignored);
  return folder;
}

}  // namespace warpline
