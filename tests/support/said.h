#pragma once

#include <gtest/gtest.h>

#include "sim/texts/projector_texts.h"

namespace warpline {

// What the simulated projector says in English; in Japanese it must say something else.
inline std::string Said(const NamedText& text) {
  const std::string english = sim::ProjectorTextsOf(Language::kEnglish).Say(text);
  EXPECT_NE(sim::ProjectorTextsOf(Language::kJapanese).Say(text), english);
  return english;
}

}  // namespace warpline
