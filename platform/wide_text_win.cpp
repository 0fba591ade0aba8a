#include "platform/wide_text_win.h"

#include <windows.h>

#include <filesystem>

namespace warpline {

std::wstring WideOf(std::string_view utf8) {
  return std::filesystem::path(std::u8string(utf8.begin(), utf8.end())).wstring();
}

std::string Utf8OfWide(std::wstring_view wide) {
  const int wide_size = static_cast<int>(wide.size());
  const int size =
      ::WideCharToMultiByte(CP_UTF8, 0, wide.data(), wide_size, nullptr, 0, nullptr, nullptr);
  std::string text(static_cast<std::size_t>(size), '\0');
  ::WideCharToMultiByte(CP_UTF8, 0, wide.data(), wide_size, text.data(), size, nullptr, nullptr);
  return text;
}

}  // namespace warpline
