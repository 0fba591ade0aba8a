#pragma once

#include <cstddef>
#include <string>

#include "core/LSSglobal.h"
#include "core/texts.h"

// The tool's texts: the messages and captions that the product numbers (1..219), and behind them
// those that it does not, by name. "&" marks an access key, "&&" is an ampersand.

namespace warpline {

inline constexpr int kMessageCount = 219;

// The names stand in core/tool_texts.h, which only those include who say one of them: a new text
// compiles little anew.
enum class ToolText : std::size_t;

// The text under an identifier: number for Japanese, number + 1000 for English. Empty when there is
// none.
const std::string& CatalogueText(int identifier);

// The text of a message number in the language in force. Empty when the number is outside 1..219.
const std::string& TextOf(const LSSglobal& global, int number);

// A text without a number in the language in force.
const std::string& TextOf(const LSSglobal& global, ToolText key);

// What somebody who knows no language has to say, in the language in force.
std::string TextOf(const LSSglobal& global, const NamedText& text);

}  // namespace warpline
