#include "cli/cli_texts.h"

#include <algorithm>
#include <set>

#include "tests/cli/cli_run.h"

namespace warpline {
namespace {

std::multiset<std::string> PlacesOf(const std::string& text) {
  std::multiset<std::string> places;
  for (std::size_t at = text.find('{'); at != std::string::npos; at = text.find('{', at + 1)) {
    places.insert(text.substr(at, 3));
  }
  return places;
}

TEST(CliTexts, BothFilesHoldEveryKeyOnceAndSayTheSame) {
  Words expected(kCliTextKeys.begin(), kCliTextKeys.end());
  std::sort(expected.begin(), expected.end());
  for (const int language : {0, 1}) {
    Words keys = LinesOf(std::string(CliTextFile(language)));
    for (std::string& key : keys) key = key.substr(0, key.find(':'));
    std::sort(keys.begin(), keys.end());
    EXPECT_EQ(keys, expected) << "language " << language;
  }
  for (std::size_t i = 0; i < kCliTextKeys.size(); ++i) {
    const std::string& english = CliTextsOf(0)[static_cast<CliText>(i)];
    const std::string& japanese = CliTextsOf(1)[static_cast<CliText>(i)];
    EXPECT_FALSE(english.empty()) << kCliTextKeys[i];
    EXPECT_FALSE(japanese.empty()) << kCliTextKeys[i];
    EXPECT_EQ(PlacesOf(english), PlacesOf(japanese)) << kCliTextKeys[i];
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
