#pragma once

#include <wx/string.h>

#include <string>

#include "sim/texts/projector_texts.h"

namespace warpline::sim {

inline wxString Wx(const std::string& utf8) {
  return wxString::FromUTF8(utf8.data(), utf8.size());
}

inline wxString Label(const ProjectorTexts& texts, ProjectorText key) {
  return Wx(texts[key]);
}

}  // namespace warpline::sim
