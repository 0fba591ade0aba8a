#include "files/LSSfile.h"

#include <string>
#include <utility>
#include <vector>

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

std::filesystem::path FolderOf(const std::filesystem::path& path) {
  if (path.has_parent_path()) return path.parent_path();
  std::error_code ignored;
  return std::filesystem::current_path(ignored);
}

bool RefuseForFolder(const Messages& messages, const std::filesystem::path& folder,
                     std::error_code error) {
  messages.ShowSystemError(Utf8Of(folder) + ": " + SystemErrorText(error));
  return false;
}

bool IsDeviceOrPipe(const std::filesystem::path& path) {
  std::error_code ignored;
  return std::filesystem::is_other(path, ignored);
}

}  // namespace

LSSfile::LSSfile(const Messages& messages, FreeSpaceQuestion free_space)
    : messages_(messages), free_space_(std::move(free_space)) {
  ResetStaging();
}

void LSSfile::ResetStaging() {
  staging_.Correction = {};
  ResetToScreenType(staging_.Correction);
}

bool LSSfile::OpenDataFile(const std::filesystem::path& path, std::string_view type) {
  const auto module = MakeFormatModule(type, staging_, messages_);
  if (module) module->ResetRead();
  place_ = {};
  std::error_code ignored;
  if (!reader_ && type == kTypeIni && !std::filesystem::exists(path, ignored)) return false;

  std::string text;
  const std::error_code error = reader_ ? reader_(path, text) : ReadWholeFile(path, text);
  if (error) return RefuseForSystem(messages_, error);
  const auto refused = module ? ReadLines(text, *module, place_) : kFileValueWrong;
  return refused ? Refuse(messages_, *refused) : true;
}

bool LSSfile::SaveDataFile(const std::filesystem::path& path, std::string_view type,
                           FileData data) const {
  if (!MakeFormatModule(type, data, messages_)) return Refuse(messages_, kFileValueWrong);
  if (!MayWrite(path)) return false;
  if (!IsDeviceOrPipe(path) && !HasSpace(path, type)) return false;
  const std::optional<std::string> text = TextOf(type, std::move(data));
  return text && Replace(path, *text);
}

std::optional<std::string> LSSfile::TextOf(std::string_view type, FileData data) const {
  const auto module = MakeFormatModule(type, data, messages_);
  std::vector<std::string> lines;
  if (!module) {
    Refuse(messages_, kFileValueWrong);
  } else if (!module->Write(lines)) {
    messages_.ShowText(kMsgSaveFailed);
  } else {
    return JoinLines(lines);
  }
  return std::nullopt;
}

bool LSSfile::SaveBytes(const std::filesystem::path& path, std::string_view bytes) const {
  return MayWrite(path) && Replace(path, bytes);
}

bool LSSfile::Replace(const std::filesystem::path& path, std::string_view bytes) const {
  const std::error_code error = ReplaceFileContents(path, bytes);
  if (!error) return true;
  const std::filesystem::path folder = FolderOf(path);
  const bool folders_fault = !IsDeviceOrPipe(path) && !CanMakeFilesIn(folder);
  return folders_fault ? RefuseForFolder(messages_, folder, error)
                       : RefuseForSystem(messages_, error);
}

bool LSSfile::MayWrite(const std::filesystem::path& path) const {
  const bool forbidden = (FileAttributes(path) & kWriteForbidden) != 0;
  return forbidden ? Refuse(messages_, kFileWriteFailed) : true;
}

bool LSSfile::HasSpace(const std::filesystem::path& path, std::string_view type) const {
  std::error_code error;
  const std::uintmax_t free_space = free_space_(path, error);
  if (error) return RefuseForFolder(messages_, FolderOf(path), error);
  return free_space < SpaceNeeded(type) ? Refuse(messages_, kFileNoSpace) : true;
}

}  // namespace warpline
