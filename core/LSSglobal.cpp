#include "core/LSSglobal.h"

#include "core/conversions.h"

namespace warpline {
namespace {

// Takes the next word off the text: empty when none is left.
std::string_view NextWord(std::string_view& text) {
  std::size_t begin = 0;
  while (begin < text.size() && IsWhiteSpace(text[begin])) ++begin;
  std::size_t end = begin;
  while (end < text.size() && !IsWhiteSpace(text[end])) ++end;
  const std::string_view word = text.substr(begin, end - begin);
  text.remove_prefix(end);
  return word;
}

}  // namespace

void ResetModel(LSSglobal& global) {
  global.Correction.ScreenType = 0;
  global.Correction.Projection = {};
  ResetToScreenType(global.Correction);
  global.SecondCopy = global.Correction.Axes;
}

void SetLanguage(LSSglobal& global, std::int32_t language) {
  global.MessageOffset = language == 1 ? 0 : kEnglishOffset;
}

std::int16_t DecideLanguage(bool system_is_japanese, std::string_view command_line) {
  bool japanese = system_is_japanese;
  for (std::string_view word = NextWord(command_line); !word.empty();
       word = NextWord(command_line)) {
    if (word[0] != '/' && word[0] != '-') continue;
    const std::string_view rest = word.substr(1);
    japanese = rest == "J" || rest == "j";
  }
  return japanese ? 1 : 0;
}

void ApplyLanguage(LSSglobal& global, std::int16_t language) {
  global.Language = language;
  global.EnglishMode = language == 1 ? 0 : 1;
  SetLanguage(global, language);
}

void ApplyLanguage(LSSglobal& global, Language language) {
  ApplyLanguage(global, static_cast<std::int16_t>(language == Language::kJapanese ? 1 : 0));
}

std::filesystem::path DataFolder(const std::filesystem::path& application_data) {
  return application_data / "Varnok Beamkit" / "Warpline Tool 3.0";
}

}  // namespace warpline
