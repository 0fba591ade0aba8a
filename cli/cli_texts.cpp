#include "cli/cli_texts.h"

namespace warpline {

namespace embedded {
std::string_view Embedded_cli_en();
std::string_view Embedded_cli_ja();
}  // namespace embedded

const CliTexts& CliTextsOf(Language language) {
  static const CliTexts japanese(embedded::Embedded_cli_ja());
  static const CliTexts english(embedded::Embedded_cli_en());
  return language == Language::kJapanese ? japanese : english;
}

}  // namespace warpline
