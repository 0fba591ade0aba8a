#include "core/texts.h"

#include <algorithm>

namespace warpline {
namespace {

constexpr std::string_view kSeparator = ": ";

std::string Unescaped(std::string_view text) {
  std::string plain;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const std::string_view rest = text.substr(at);
    const bool line_end = rest.starts_with("\\n");
    const bool escaped = line_end || rest.starts_with("\\t");
    plain += line_end ? '\n' : escaped ? '\t' : rest.front();
    if (escaped) ++at;
  }
  return plain;
}

// The number of the place that the text begins with; none: its size is past every value.
std::size_t PlaceAt(std::string_view text) {
  const bool is_place =
      text.size() > 2 && text[0] == '{' && text[2] == '}' && text[1] >= '0' && text[1] <= '9';
  return is_place ? static_cast<std::size_t>(text[1] - '0') : std::string_view::npos;
}

}  // namespace

TextMap ParseTexts(std::string_view file) {
  TextMap texts;
  while (!file.empty()) {
    const std::string_view line = file.substr(0, file.find('\n'));
    file.remove_prefix(std::min(line.size() + 1, file.size()));
    const std::size_t separator = line.find(kSeparator);
    if (line.starts_with('#') || separator == std::string_view::npos) continue;
    texts.emplace(line.substr(0, separator), Unescaped(line.substr(separator + kSeparator.size())));
  }
  return texts;
}

std::string FilledText(std::string_view text, const std::vector<std::string>& values) {
  std::string filled;
  while (!text.empty()) {
    const std::size_t place = PlaceAt(text);
    const bool known = place < values.size();
    if (known) filled += values[place];
    if (!known) filled += text.front();
    text.remove_prefix(known ? 3 : 1);
  }
  return filled;
}

}  // namespace warpline
