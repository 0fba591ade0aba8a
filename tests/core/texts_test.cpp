#include "core/texts.h"

#include <gtest/gtest.h>

#include <array>
#include <fstream>
#include <set>

#include "cli/cli_texts.h"
#include "core/catalogue.h"
#include "core/tool_texts.h"
#include "platform/files.h"
#include "sim/texts/projector_texts.h"
#include "standin/search_texts.h"
#include "tests/support/source_folder.h"

namespace warpline {
namespace {

using Keys = std::multiset<std::string>;

template <typename Key>
Keys NamesOf(Key key) {
  const auto names = TextKeyNames(key);
  return {names.begin(), names.end()};
}

Keys CatalogueKeys() {
  Keys keys = NamesOf(ToolText{});
  for (int number = 1; number <= kMessageCount; ++number) keys.insert(std::to_string(number));
  return keys;
}

TextMap TextsIn(const std::string& file) {
  std::string text;
  EXPECT_FALSE(ReadWholeFile(SourceFolder() / "resources" / file, text)) << file;
  return ParseTexts(text);
}

Keys KeysOf(const TextMap& texts) {
  Keys keys;
  for (const auto& [key, text] : texts) keys.insert(key);
  return keys;
}

// What a translation must hold as often as the original: places and marks of access keys with the
// sign behind, line ends and tabs.
Keys FixedParts(const std::string& text) {
  Keys parts;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const bool named = text[at] == '{' && text.substr(at, 3).ends_with('}');
    if (named) parts.insert(text.substr(at, 3));
    if (text[at] == '\n' || text[at] == '\t') parts.insert(text.substr(at, 1));
    if (text[at] != '&' || at + 1 == text.size()) continue;
    ++at;
    if (text[at] != '&') parts.insert({'&', static_cast<char>(text[at] & ~0x20)});
  }
  return parts;
}

TEST(TextFiles, BothLanguagesOfEveryProgramHoldEachKeyOnceAndSayTheSame) {
  const std::pair<std::string, Keys> programs[] = {{"catalogue", CatalogueKeys()},
                                                   {"cli", NamesOf(CliText{})},
                                                   {"projector", NamesOf(sim::ProjectorText{})},
                                                   {"search", NamesOf(sim::SearchText{})}};
  for (const auto& [program, keys] : programs) {
    const TextMap english = TextsIn(program + "_en.txt");
    const TextMap japanese = TextsIn(program + "_ja.txt");
    EXPECT_EQ(KeysOf(english), keys);
    ASSERT_EQ(KeysOf(japanese), keys);
    for (const auto& [key, text] : english) {
      const std::string& translated = japanese.find(key)->second;
      SCOPED_TRACE(program + " " + key + ": " + translated);
      EXPECT_FALSE(text.empty() || translated.empty());
      EXPECT_EQ(FixedParts(text), FixedParts(translated));
      EXPECT_EQ(text.ends_with(' '), translated.ends_with(' '));
      EXPECT_NO_THROW(PathOf(translated).u32string()) << "not UTF-8";
    }
  }
}

TEST(TextFiles, AreReadLineByLine) {
  const TextMap texts = ParseTexts("# No: text\nA: a\\nb\\tc\n\nno text\nB: c: \\d \nA: e");
  const TextMap expected{{"A", "a\nb\tc"}, {"A", "e"}, {"B", "c: \\d "}};
  EXPECT_EQ(texts, expected);
}

TEST(TextFiles, FillPlacesByNumber) {
  EXPECT_EQ(FilledText("{1} not {0}, {2} {x} {1} end", {"a{1}", "b"}), "b not a{1}, {2} {x} b end");
  EXPECT_EQ(FilledText("no {0", {"a"}), "no {0");
  EXPECT_EQ(FilledText("\"{0}\" cannot be shown: {1}", {"{1}", "b"}), "\"{1}\" cannot be shown: b");
  EXPECT_EQ(FilledText("", {"a"}), "");
}

std::string OnOneLine(const std::string& text) {
  std::string line;
  for (const char c : text) line += c == '\n' ? "\\n" : std::string(1, c);
  return line;
}

// A line of the list is "number|English|Japanese"; "\n" is a line break.
TEST(Catalogue, EveryTextIsTheOneOfTheList) {
  std::ifstream list(SourceFolder() / "tests/core/catalogue.txt");
  int number = 0;
  for (std::string line; std::getline(list, line);) {
    ++number;
    const std::string text = CatalogueText(number + kEnglishOffset) + "|" + CatalogueText(number);
    EXPECT_EQ(std::to_string(number) + "|" + OnOneLine(text), line);
  }
  EXPECT_EQ(number, kMessageCount);
}

TEST(Catalogue, OtherIdentifiersAreEmpty) {
  for (const int identifier : {-1000, -1, 0, 220, 999, 1000, 1220, 2001, 2147483647}) {
    EXPECT_EQ(CatalogueText(identifier), "") << identifier;
  }
  const LSSglobal global;
  for (const int number : {-999, -1, 0, 220, 1001, 2147483647}) {
    EXPECT_EQ(TextOf(global, number), "") << number;
  }
}

}  // namespace
}  // namespace warpline
