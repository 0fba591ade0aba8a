#include "ui/read_me.h"

#include "core/catalogue.h"
#include "core/tool_texts.h"
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

std::filesystem::path GuideFile(const LSSglobal& global,
                                const std::filesystem::path& program_folder) {
  return program_folder / "docs" /
         (LanguageOf(global) == Language::kJapanese ? "guide_ja.html" : "guide_en.html");
}

void ShowHelpFile(const Engine& engine, const std::filesystem::path& file, const ShowFile& show) {
  std::error_code ignored;
  if (!std::filesystem::exists(file, ignored)) {
    ShowMissing(engine.messages, file);
  } else if (!show(file)) {
    TellNotShown(engine, file);
  }
}

void TellNotShown(const Engine& engine, const std::filesystem::path& file) {
  engine.messages.ShowSystemError(
      FilledText(TextOf(engine.global, ToolText::kFileNotShown), {Utf8Of(file)}));
}

}  // namespace warpline
