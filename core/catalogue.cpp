#include "core/catalogue.h"
#include "core/tool_texts.h"

#include <array>
#include <string_view>

namespace warpline {
namespace embedded {

std::string_view Embedded_catalogue_en();
std::string_view Embedded_catalogue_ja();

}  // namespace embedded

namespace {

struct Catalogue {
  // Index 0 stays empty: it answers every number that has no text.
  std::array<std::string, kMessageCount + 1> Numbered;
  TextTable<ToolText> Named;

  explicit Catalogue(const TextMap& texts) : Named(texts) {
    for (std::size_t number = 1; number < Numbered.size(); ++number) {
      const auto found = texts.find(std::to_string(number));
      if (found != texts.end()) Numbered[number] = found->second;
    }
  }

  const std::string& At(int number) const {
    const bool exists = number >= 1 && number <= kMessageCount;
    return Numbered[exists ? static_cast<std::size_t>(number) : 0];
  }
};

const Catalogue& CatalogueOf(Language language) {
  static const Catalogue kJapanese(ParseTexts(embedded::Embedded_catalogue_ja()));
  static const Catalogue kEnglish(ParseTexts(embedded::Embedded_catalogue_en()));
  return language == Language::kJapanese ? kJapanese : kEnglish;
}

}  // namespace

const std::string& CatalogueText(int identifier) {
  if (identifier <= kEnglishOffset) return CatalogueOf(Language::kJapanese).At(identifier);
  return CatalogueOf(Language::kEnglish).At(identifier - kEnglishOffset);
}

const std::string& TextOf(const LSSglobal& global, int number) {
  const bool exists = number >= 1 && number <= kMessageCount;
  return CatalogueText(exists ? number + global.MessageOffset : 0);
}

const std::string& TextOf(const LSSglobal& global, ToolText key) {
  return CatalogueOf(LanguageOf(global)).Named[key];
}

std::string TextOf(const LSSglobal& global, const NamedText& text) {
  return CatalogueOf(LanguageOf(global)).Named.Say(text);
}

}  // namespace warpline
