#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <initializer_list>
#include <map>
#include <string>
#include <string_view>
#include <vector>

// The texts that people read. They stand in resources/, one file a language for each program, and
// are embedded in the programs. A line of a file is "key: text"; the key is a name or a number. In
// a text "\n" is a line end, "\t" a tab, {0} to {9} are the places of values, and a blank at its
// end counts. Lines that begin with "#" say nothing. UTF-8, every line ends with LF.

namespace warpline {

enum class Language { kEnglish, kJapanese };

// The language behind the number that stands for it in records and interfaces: 1 Japanese, any
// other English.
constexpr Language LanguageOf(int number) {
  return number == 1 ? Language::kJapanese : Language::kEnglish;
}

// The texts of a file by their keys. A key that stands there twice has two.
using TextMap = std::multimap<std::string, std::string, std::less<>>;
TextMap ParseTexts(std::string_view file);

// The text with each place {N} replaced by value N. A place without a value stays; what is filled
// in is not looked at again.
std::string FilledText(std::string_view text, const std::vector<std::string>& values);

// What there is to say, by one who knows no language: the name of a text and what fills its places,
// the first ones Values, those behind them Inner.
struct NamedText {
  std::string_view Name = {};  // a literal
  std::vector<std::string> Values = {};
  std::vector<NamedText> Inner = {};
};

// Declares an enum class of the keys of a program's files and TextKeyNames for it. KEYS(X) is the
// list, X(Key) for each; Key is written kKey in code.
#define WARPLINE_TEXT_IDENTIFIER(key) k##key,
#define WARPLINE_TEXT_NAME(key) #key,
#define WARPLINE_TEXT_KEYS(Type, KEYS)                                  \
  enum class Type : std::size_t { KEYS(WARPLINE_TEXT_IDENTIFIER) };     \
  constexpr auto TextKeyNames(Type) {                                   \
    return std::to_array<std::string_view>({KEYS(WARPLINE_TEXT_NAME)}); \
  }

// The texts of one file under the keys of an enum that WARPLINE_TEXT_KEYS declared.
template <typename Key>
class TextTable {
 public:
  explicit TextTable(const TextMap& map) {
    std::size_t index = 0;
    for (const std::string_view name : kNames) {
      const auto found = map.find(name);
      if (found != map.end()) texts_[index] = found->second;
      ++index;
    }
  }
  explicit TextTable(std::string_view file) : TextTable(ParseTexts(file)) {}

  // Empty when the file lacks the key.
  const std::string& operator[](Key key) const { return texts_[static_cast<std::size_t>(key)]; }

  std::string Fill(Key key, std::initializer_list<std::string> values) const {
    return FilledText((*this)[key], values);
  }

  // The name itself when there is no text of that name.
  std::string Say(const NamedText& text) const {
    const auto name = std::find(kNames.begin(), kNames.end(), text.Name);
    if (name == kNames.end()) return std::string(text.Name);
    std::vector<std::string> values = text.Values;
    for (const NamedText& inner : text.Inner) values.push_back(Say(inner));
    return FilledText(texts_[static_cast<std::size_t>(name - kNames.begin())], values);
  }

 private:
  static constexpr auto kNames = TextKeyNames(Key{});

  std::vector<std::string> texts_ = std::vector<std::string>(kNames.size());
};

}  // namespace warpline
