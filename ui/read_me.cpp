#include "ui/read_me.h"
#include "platform/files.h"

#include <string>
#include <system_error>

namespace warpline {
namespace {

void ShowMissing(const Messages& messages, const std::filesystem::path& file) {
  std::string text = SystemErrorText(std::make_error_code(std::errc::no_such_file_or_directory));
  text.append("\n").append(Utf8Of(file));
  messages.ShowSystemError(text);
}

}  // namespace

std::filesystem::path ReadMeFile(const LSSglobal& global,
                                 const std::filesystem::path& program_folder) {
  return program_folder / (LanguageOf(global) == Language::kJapanese ? "ReadMe(Japanese).txt"
                                                                     : "ReadMe(English).txt");
}

void ShowReadMe(const LSSglobal& global, const Messages& messages,
                const std::filesystem::path& program_folder,
                const std::function<bool(const std::filesystem::path&)>& show_text) {
  const std::filesystem::path file = ReadMeFile(global, program_folder);
  std::error_code ignored;
  if (!std::filesystem::exists(file, ignored) || !show_text(file)) ShowMissing(messages, file);
}

}  // namespace warpline
