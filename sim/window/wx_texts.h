#pragma once

#include <wx/string.h>

#include <string>

#include "sim/recording/window_texts.h"

namespace warpline::sim {

inline wxString Wx(const std::string& utf8) {
  return wxString::FromUTF8(utf8.data(), utf8.size());
}

inline wxString Label(const WindowTexts& texts, WindowText key) {
  return Wx(texts[key]);
}

}  // namespace warpline::sim
