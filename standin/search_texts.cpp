#include "standin/search_texts.h"

#include <array>

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

SearchText StateOf(bool selectable, std::uint8_t power_state) {
  static constexpr std::array kStates{SearchText::kStandby, SearchText::kReady,
                                      SearchText::kWarmingUp, SearchText::kCoolingDown};
  if (!selectable) return SearchText::kUnselectable;
  return power_state < kStates.size() ? kStates[power_state] : SearchText::kReady;
}

}  // namespace sim
}  // namespace warpline
