#pragma once

#include <gtest/gtest.h>

#include "core/catalogue.h"
#include "sim/texts/projector_texts.h"

namespace warpline {

// What the simulated projector says in English; in Japanese it must say something else.
inline std::string Said(const NamedText& text) {
  const std::string english = sim::ProjectorTextsOf(Language::kEnglish).Say(text);
  EXPECT_NE(sim::ProjectorTextsOf(Language::kJapanese).Say(text), english);
  return english;
}

// The same of the tool.
inline std::string SaidByTool(const NamedText& text) {
  LSSglobal global;
  ApplyLanguage(global, Language::kJapanese);
  const std::string japanese = TextOf(global, text);
  ApplyLanguage(global, Language::kEnglish);
  EXPECT_NE(TextOf(global, text), japanese);
  return TextOf(global, text);
}

}  // namespace warpline
