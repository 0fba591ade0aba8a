#pragma once

#include <string>
#include <string_view>

// The words of an HTML page, and of the pictures drawn in it.

namespace warpline {

// The text as content or as the value of an attribute in double quotes.
std::string Escaped(std::string_view text);

// An element with what stands in it, which is HTML itself. start is the tag with its attributes,
// "td class=\"number\"".
std::string Element(std::string_view start, std::string_view content);

// The same with a text in it, which is escaped.
std::string TextElement(std::string_view start, std::string_view text);

}  // namespace warpline
