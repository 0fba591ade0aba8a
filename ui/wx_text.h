#pragma once

#include <wx/string.h>

#include <filesystem>
#include <string_view>

#include "core/LSSglobal.h"
#include "core/catalogue.h"
#include "core/message_numbers.h"
#include "platform/files.h"

// Between the toolkit's texts and those of the rest of the program (UTF-8, paths).

namespace warpline {

inline wxString WxText(std::string_view utf8) {
  return wxString::FromUTF8(utf8.data(), utf8.size());
}

inline wxString WxPath(const std::filesystem::path& path) {
  return WxText(Utf8Of(path));
}

inline std::filesystem::path PathOfWx(const wxString& text) {
  return PathOf(text.utf8_string());
}

// A catalogue text as a caption: access keys marked.
inline wxString CaptionOf(const LSSglobal& global, int number) {
  return WxText(TextOf(global, number));
}
inline wxString CaptionOf(const LSSglobal& global, ToolText key) {
  return WxText(TextOf(global, key));
}

}  // namespace warpline
