#include "sim/recording/window_texts.h"

#include <algorithm>

namespace warpline {

namespace embedded {
std::string_view Embedded_projector_en();
std::string_view Embedded_projector_ja();
}  // namespace embedded

namespace sim {
namespace {

std::string Unescaped(std::string_view text) {
  std::string plain;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const bool escaped = text[at] == '\\' && at + 1 < text.size();
    if (escaped) ++at;
    plain += !escaped ? text[at] : text[at] == 'n' ? '\n' : '\t';
  }
  return plain;
}

}  // namespace

WindowTexts::WindowTexts(std::string_view file) {
  while (!file.empty()) {
    const std::size_t end = std::min(file.find('\n'), file.size());
    const std::string_view line = file.substr(0, end);
    file.remove_prefix(std::min(end + 1, file.size()));
    const std::size_t colon = line.find(": ");
    const auto* key = std::ranges::find(kWindowTextKeys, line.substr(0, colon));
    if (colon == std::string_view::npos || key == kWindowTextKeys.end()) continue;
    texts_[static_cast<std::size_t>(key - kWindowTextKeys.begin())] =
        Unescaped(line.substr(colon + 2));
  }
}

std::string WindowTexts::Fill(WindowText key, std::initializer_list<std::string> arguments) const {
  std::string text = (*this)[key];
  std::size_t from = 0;
  int index = 0;
  for (const std::string& argument : arguments) {
    const std::string place{'{', static_cast<char>('0' + index++), '}'};
    const std::size_t at = text.find(place, from);
    if (at == std::string::npos) continue;
    text.replace(at, place.size(), argument);
    from = at + argument.size();
  }
  return text;
}

std::string_view WindowTextFile(bool japanese) {
  return japanese ? embedded::Embedded_projector_ja() : embedded::Embedded_projector_en();
}

}  // namespace sim
}  // namespace warpline
