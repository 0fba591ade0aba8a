#include "app/plain_caption.h"

#include "core/catalogue.h"

namespace warpline {

std::string PlainCaption(const LSSglobal& global, int number) {
  std::string text = TextOf(global, number);
  const std::size_t japanese = text.find("(&");
  if (japanese != std::string::npos) text.erase(japanese);
  std::erase(text, '&');
  while (text.ends_with('.')) text.pop_back();
  return text;
}

}  // namespace warpline
