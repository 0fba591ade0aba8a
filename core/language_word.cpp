#include "core/language_word.h"

#include "platform/environment.h"

namespace warpline {

std::string LanguageWord(const std::vector<std::string>& words) {
  std::string language;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::string_view word = words[i];
    if (word == kLanguageOption && i + 1 < words.size()) language = words[i + 1];
    if (word.starts_with(kLanguageOption) && word.substr(kLanguageOption.size()).starts_with("=")) {
      language = word.substr(kLanguageOption.size() + 1);
    }
  }
  return language;
}

Language LanguageOfWord(std::string_view word) {
  if (word == "ja") return Language::kJapanese;
  if (word == "en") return Language::kEnglish;
  return SystemLanguageIsJapanese() ? Language::kJapanese : Language::kEnglish;
}

}  // namespace warpline
