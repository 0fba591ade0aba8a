#include "app/start_answer.h"

#include "app/start_words.h"
#include "core/LSSglobal.h"
#include "core/build_info.h"
#include "core/catalogue.h"
#include "core/tool_texts.h"
#include "link/library_origin.h"
#include "platform/environment.h"

namespace warpline {

std::optional<std::string> StartAnswer(std::vector<std::string> words, std::string_view toolkit,
                                       const std::filesystem::path& folder) {
  const bool version = std::erase(words, "--version") > 0;
  const bool help = std::erase(words, "--help") > 0;
  if (!version && !help) return std::nullopt;
  if (!help) return VersionText("WarplineTool", toolkit) + LibraryVersionText(folder);
  LSSglobal global;
  ApplyLanguage(global, DecideLanguage(SystemLanguageIsJapanese(), SortWords(words).switches));
  return TextOf(global, ToolText::kStartHelp);
}

}  // namespace warpline
