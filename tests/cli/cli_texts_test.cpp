#include "cli/cli_texts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace warpline {
namespace {

std::multiset<std::string> PlacesOf(const std::string& text) {
  std::multiset<std::string> places;
  for (std::size_t at = text.find('{'); at != std::string::npos; at = text.find('{', at + 1)) {
    places.insert(text.substr(at, 3));
  }
  return places;
}

std::vector<std::string> KeysOf(int language) {
  std::istringstream stream{std::string(CliTextFile(language))};
  std::vector<std::string> keys;
  for (std::string line; std::getline(stream, line);)
    keys.push_back(line.substr(0, line.find(':')));
  return keys;
}

TEST(CliTexts, BothFilesHoldEveryKeyOnceAndNoOther) {
  std::vector<std::string> expected(kCliTextKeys.begin(), kCliTextKeys.end());
  std::sort(expected.begin(), expected.end());
  for (const int language : {0, 1}) {
    std::vector<std::string> keys = KeysOf(language);
    std::sort(keys.begin(), keys.end());
    EXPECT_EQ(keys, expected) << "language " << language;
  }
}

TEST(CliTexts, LanguagesSayTheSame) {
  const CliTexts& english = CliTextsOf(0);
  const CliTexts& japanese = CliTextsOf(1);
  for (std::size_t i = 0; i < kCliTextKeys.size(); ++i) {
    const auto key = static_cast<CliText>(i);
    EXPECT_FALSE(english[key].empty()) << kCliTextKeys[i];
    EXPECT_FALSE(japanese[key].empty()) << kCliTextKeys[i];
    EXPECT_EQ(PlacesOf(english[key]), PlacesOf(japanese[key])) << kCliTextKeys[i];
  }
}

TEST(CliTexts, FillsPlacesByNumber) {
  const CliTexts texts("KindsDiffer: {1} not {0}, {2} {x} {1} end\nBadAxis: no {0\n");
  EXPECT_EQ(texts.Fill(CliText::kKindsDiffer, {"a{1}", "b"}), "b not a{1}, {2} {x} b end");
  EXPECT_EQ(texts.Fill(CliText::kBadAxis, {"a"}), "no {0");
  EXPECT_EQ(texts.Fill(CliText::kBadPanel, {"a"}), "");
}

}  // namespace
}  // namespace warpline
