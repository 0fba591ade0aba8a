#include "standin/search_texts.h"

namespace warpline {

namespace embedded {
std::string_view Embedded_search_en();
std::string_view Embedded_search_ja();
}  // namespace embedded

namespace sim {

const SearchTexts& SearchTextsOf(Language language) {
  static const SearchTexts japanese(embedded::Embedded_search_ja());
  static const SearchTexts english(embedded::Embedded_search_en());
  return language == Language::kJapanese ? japanese : english;
}

}  // namespace sim
}  // namespace warpline
