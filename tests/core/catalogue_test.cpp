#include "core/catalogue.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <set>
#include <string_view>
#include <vector>

#include "tests/support/source_folder.h"

namespace warpline {
namespace {

const std::string& Japanese(int number) {
  return CatalogueText(number);
}
const std::string& English(int number) {
  return CatalogueText(number + kEnglishOffset);
}

// The letters behind single ampersands, in upper case.
std::vector<char> AccessKeys(std::string_view text) {
  std::vector<char> keys;
  for (std::size_t i = 0; i + 1 < text.size(); ++i) {
    if (text[i] != '&') continue;
    ++i;
    if (text[i] != '&') keys.push_back(static_cast<char>(text[i] & ~0x20));
  }
  return keys;
}

bool HoldsJapanese(std::string_view text) {
  return std::any_of(text.begin(), text.end(), [](char c) { return (c & 0x80) != 0; });
}

// What a translation must carry over letter by letter.
constexpr std::array<std::string_view, 8> kFixedParts{
    "[@]", "(Raydeck.dll) \n", "USBn", "WinSock", "255", "65535", "256", "Warpline Tool"};

TEST(Catalogue, TranslationsKeepWhatIsNoWords) {
  for (int number = 1; number <= kMessageCount; ++number) {
    SCOPED_TRACE(number);
    const std::string& english = English(number);
    const std::string& japanese = Japanese(number);
    EXPECT_FALSE(HoldsJapanese(english)) << english;
    EXPECT_EQ(english.ends_with("..."), japanese.ends_with("..."));
    EXPECT_EQ(english.find('\\'), std::string::npos);
    EXPECT_EQ(japanese.find('\\'), std::string::npos);
    EXPECT_EQ(english.ends_with('?'), japanese.ends_with("？"));
    if (number == 1) continue;  // the title's product name is half translated
    for (const std::string_view part : kFixedParts) {
      EXPECT_EQ(english.find(part) == std::string::npos, japanese.find(part) == std::string::npos)
          << part;
    }
  }
}

TEST(Catalogue, JapaneseIsTranslatedWithItsKeyInBracketsAtTheEnd) {
  const std::set<int> same_in_both{9, 34, 36, 111, 112};
  for (int number = 1; number <= kMessageCount; ++number) {
    const std::string& text = Japanese(number);
    SCOPED_TRACE(std::to_string(number) + ": " + text);
    EXPECT_TRUE(HoldsJapanese(text) || same_in_both.contains(number));
    // A message ends like a sentence, a caption does not: tells a shifted line at once.
    const bool sentence = English(number).ends_with('.') && !English(number).ends_with("...");
    EXPECT_TRUE(number < 63 || sentence == text.ends_with("。"));
    const std::vector<char> keys = AccessKeys(text);
    if (keys.empty()) continue;
    const std::string bracket = std::string("(&") + keys[0] + ")";
    EXPECT_TRUE(text.ends_with(bracket) || text.ends_with(bracket + "..."));
    EXPECT_FALSE(text.starts_with(bracket));
  }
}

TEST(Catalogue, AccessKeysWithinAMenuDiffer) {
  const std::vector<std::vector<int>> menus{
      {155, 116, 117}, {151, 152, 153, 156}, {114, 113, 214}, {213, 118}, {158, 159, 160}};
  for (const std::vector<int>& menu : menus) {
    std::set<char> keys;
    for (const int number : menu) {
      const std::vector<char> own = AccessKeys(Japanese(number));
      ASSERT_EQ(own.size(), 1u) << number;
      EXPECT_TRUE(keys.insert(own[0]).second) << number;
    }
  }
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
    const std::string text = English(number) + "|" + Japanese(number);
    EXPECT_EQ(std::to_string(number) + "|" + OnOneLine(text), line);
  }
  EXPECT_EQ(number, kMessageCount);
}

TEST(Catalogue, OtherIdentifiersAreEmpty) {
  for (const int identifier : {-1000, -1, 0, 220, 999, 1000, 1220, 2001, 2147483647}) {
    EXPECT_EQ(CatalogueText(identifier), "") << identifier;
  }
  LSSglobal global;
  for (const std::int16_t language : {std::int16_t{0}, std::int16_t{1}}) {
    ApplyLanguage(global, language);
    for (const int number : {-999, -1, 0, 220, 1001, 2147483647}) {
      EXPECT_EQ(TextOf(global, number), "") << number;
    }
  }
}

}  // namespace
}  // namespace warpline
