#include "core/catalogue.h"

#include <array>
#include <charconv>
#include <string_view>

namespace warpline {
namespace embedded {

std::string_view Embedded_catalogue_en();
std::string_view Embedded_catalogue_ja();

}  // namespace embedded

namespace {

// Index 0 stays empty: it answers every identifier that has no text.
using Texts = std::array<std::string, kMessageCount + 1>;

std::string WithLineBreaks(std::string_view line) {
  static constexpr std::string_view kBreak = "\\n";
  std::string text;
  for (std::size_t at = line.find(kBreak); at != std::string_view::npos; at = line.find(kBreak)) {
    text.append(line.substr(0, at)).push_back('\n');
    line.remove_prefix(at + kBreak.size());
  }
  return text.append(line);
}

void TakeLine(std::string_view line, Texts& texts) {
  static constexpr std::string_view kSeparator = ": ";
  const std::size_t separator = line.find(kSeparator);
  if (line.starts_with('#') || separator == std::string_view::npos) return;
  int number = 0;
  std::from_chars(line.data(), line.data() + separator, number);
  if (number < 1 || number > kMessageCount) return;
  texts[static_cast<std::size_t>(number)] =
      WithLineBreaks(line.substr(separator + kSeparator.size()));
}

Texts ParseCatalogue(std::string_view file) {
  Texts texts;
  while (!file.empty()) {
    const std::size_t end = file.find('\n');
    TakeLine(file.substr(0, end), texts);
    file.remove_prefix(end == std::string_view::npos ? file.size() : end + 1);
  }
  return texts;
}

const std::string& TextAt(const Texts& texts, int number) {
  const bool exists = number >= 1 && number <= kMessageCount;
  return texts[exists ? static_cast<std::size_t>(number) : 0];
}

}  // namespace

const std::string& CatalogueText(int identifier) {
  static const Texts kJapanese = ParseCatalogue(embedded::Embedded_catalogue_ja());
  static const Texts kEnglish = ParseCatalogue(embedded::Embedded_catalogue_en());
  if (identifier <= kEnglishOffset) return TextAt(kJapanese, identifier);
  return TextAt(kEnglish, identifier - kEnglishOffset);
}

const std::string& TextOf(const LSSglobal& global, int number) {
  const bool exists = number >= 1 && number <= kMessageCount;
  return CatalogueText(exists ? number + global.MessageOffset : 0);
}

}  // namespace warpline
