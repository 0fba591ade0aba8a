#include "app/html.h"

namespace warpline {

std::string Escaped(std::string_view text) {
  std::string escaped;
  for (const char c : text) {
    switch (c) {
      case '&':
        escaped += "&amp;";
        break;
      case '<':
        escaped += "&lt;";
        break;
      case '>':
        escaped += "&gt;";
        break;
      case '"':
        escaped += "&quot;";
        break;
      default:
        escaped += c;
    }
  }
  return escaped;
}

std::string Element(std::string_view start, std::string_view content) {
  std::string element("<");
  element.append(start).append(">").append(content);
  return element.append("</").append(start.substr(0, start.find(' '))).append(">\n");
}

std::string TextElement(std::string_view start, std::string_view text) {
  return Element(start, Escaped(text));
}

}  // namespace warpline
