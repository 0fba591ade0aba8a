#include "cli/cli_texts.h"

#include <algorithm>

namespace warpline {

namespace embedded {
std::string_view Embedded_cli_en();
std::string_view Embedded_cli_ja();
}  // namespace embedded

CliTexts::CliTexts(std::string_view file) {
  while (!file.empty()) {
    const std::size_t end = std::min(file.find('\n'), file.size());
    const std::string_view line = file.substr(0, end);
    file.remove_prefix(std::min(end + 1, file.size()));
    const std::size_t colon = line.find(": ");
    if (colon == std::string_view::npos) continue;
    const auto key = std::find(kCliTextKeys.begin(), kCliTextKeys.end(), line.substr(0, colon));
    if (key == kCliTextKeys.end()) continue;
    texts_[static_cast<std::size_t>(key - kCliTextKeys.begin())] = line.substr(colon + 2);
  }
}

std::string CliTexts::Fill(CliText key, std::initializer_list<std::string> arguments) const {
  const std::string& text = (*this)[key];
  std::string filled;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const bool is_place = text[at] == '{' && at + 2 < text.size() && text[at + 2] == '}';
    const auto index = is_place ? static_cast<std::size_t>(text[at + 1] - '0') : arguments.size();
    if (index < arguments.size()) {
      filled += arguments.begin()[index];
      at += 2;
    } else {
      filled += text[at];
    }
  }
  return filled;
}

const CliTexts& CliTextsOf(int language) {
  static const CliTexts japanese(CliTextFile(1));
  static const CliTexts english(CliTextFile(0));
  return language == 1 ? japanese : english;
}

std::string_view CliTextFile(int language) {
  return language == 1 ? embedded::Embedded_cli_ja() : embedded::Embedded_cli_en();
}

}  // namespace warpline
