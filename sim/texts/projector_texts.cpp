#include "sim/texts/projector_texts.h"

namespace warpline {

namespace embedded {
std::string_view Embedded_projector_en();
std::string_view Embedded_projector_ja();
}  // namespace embedded

namespace sim {

const ProjectorTexts& ProjectorTextsOf(Language language) {
  static const ProjectorTexts japanese(embedded::Embedded_projector_ja());
  static const ProjectorTexts english(embedded::Embedded_projector_en());
  return language == Language::kJapanese ? japanese : english;
}

}  // namespace sim
}  // namespace warpline
