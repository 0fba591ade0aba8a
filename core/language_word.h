#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/texts.h"

// "--language ja|en", which every command line has. The language is needed before anything can be
// said about the other words, so it is looked up ahead of all of them.

namespace warpline {

inline constexpr std::string_view kLanguageOption = "--language";

// What stands behind the option, with a blank or "=" between; the last one counts. Empty when it is
// not there.
std::string LanguageWord(const std::vector<std::string>& words);

// The language of "ja" or "en"; the system's for any other word.
Language LanguageOfWord(std::string_view word);

}  // namespace warpline
