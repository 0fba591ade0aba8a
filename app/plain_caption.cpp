#include "app/plain_caption.h"

namespace warpline {
namespace {

// "&&" is an ampersand; in Japanese the key stands behind the caption, "(&S)".
std::string WithoutAccessKey(std::string text) {
  const std::size_t japanese = text.find("(&");
  if (japanese != std::string::npos) text.erase(japanese);
  for (std::size_t at = 0; (at = text.find('&', at)) != std::string::npos;) {
    text.erase(at, 1);
    if (at < text.size() && text[at] == '&') ++at;
  }
  while (text.ends_with('.')) text.pop_back();
  return text;
}

}  // namespace

std::string NameOf(const LSSglobal& global, int number) {
  return WithoutAccessKey(TextOf(global, number));
}

std::string NameOf(const LSSglobal& global, ToolText key) {
  return WithoutAccessKey(TextOf(global, key));
}

std::string PlainCaption(const LSSglobal& global, int number) {
  std::string text = NameOf(global, number);
  std::erase(text, '&');
  return text;
}

}  // namespace warpline
