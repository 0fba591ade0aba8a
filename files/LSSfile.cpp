#include "files/LSSfile.h"

#include <string>
#include <vector>

#include "files/format_module.h"
#include "platform/files.h"

namespace warpline {
namespace {

// Everything but the archive bit forbids writing.
constexpr std::uint32_t kWriteForbidden =
    kReadOnly | kHidden | kSystemFile | kVolumeLabel | kDirectory | kAlias;

bool Refuse(const Messages& messages, FileErrorCode code) {
  messages.ShowMessage(MessageCategory::kFile, code);
  return false;
}

bool RefuseForSystem(const Messages& messages, std::error_code error) {
  messages.ShowSystemError(SystemErrorText(error));
  return false;
}

}  // namespace

LSSfile::LSSfile(const Messages& messages) : messages_(messages) {
  ResetStaging();
}

void LSSfile::ResetStaging() {
  staging_.Correction = {};
  ResetToScreenType(staging_.Correction);
}

bool LSSfile::OpenDataFile(const std::filesystem::path& path, std::string_view type) {
  const auto module = MakeFormatModule(type, staging_, messages_);
  if (module) module->ResetRead();
  std::error_code ignored;
  if (type == kTypeIni && !std::filesystem::exists(path, ignored)) return false;

  std::string text;
  const std::error_code error = ReadWholeFile(path, text);
  if (error) return RefuseForSystem(messages_, error);
  const auto refused = module ? ReadLines(text, *module) : kFileValueWrong;
  return refused ? Refuse(messages_, *refused) : true;
}

bool LSSfile::SaveDataFile(const std::filesystem::path& path, std::string_view type,
                           FileData data) const {
  const auto module = MakeFormatModule(type, data, messages_);
  if (!module) return Refuse(messages_, kFileValueWrong);
  if ((FileAttributes(path) & kWriteForbidden) != 0) return Refuse(messages_, kFileWriteFailed);
  std::error_code error;
  const std::uintmax_t free_space = FreeSpace(path, error);
  if (error) return RefuseForSystem(messages_, error);
  if (free_space < SpaceNeeded(type)) return Refuse(messages_, kFileNoSpace);

  std::vector<std::string> lines;
  if (!module->Write(lines)) {
    messages_.ShowText(kMsgSaveFailed);
    return false;
  }
  error = ReplaceFileContents(path, JoinLines(lines));
  return error ? RefuseForSystem(messages_, error) : true;
}

}  // namespace warpline
