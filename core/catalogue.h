#pragma once

#include <string>

#include "core/LSSglobal.h"

// Every text that the user sees, by number (1..219) and language. UTF-8; "&" marks an access key,
// "&&" is an ampersand.

namespace warpline {

inline constexpr int kMessageCount = 219;

// The text under an identifier: number for Japanese, number + 1000 for English. Empty when there is
// none.
const std::string& CatalogueText(int identifier);

// The text of a message number in the language in force. Empty when the number is outside 1..219.
const std::string& TextOf(const LSSglobal& global, int number);

}  // namespace warpline
