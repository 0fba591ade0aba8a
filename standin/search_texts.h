#pragma once

#include "core/texts.h"

// The texts of the search library's selection window.

namespace warpline::sim {

#define WARPLINE_SEARCH_TEXTS(X) \
  X(Title)                       \
  X(Searching)                   \
  X(NothingFound)                \
  X(Found)                       \
  X(NameColumn)                  \
  X(AddressColumn)               \
  X(StateColumn)                 \
  X(Ready)                       \
  X(Unselectable)                \
  X(SearchAgain)                 \
  X(ReadMe)                      \
  X(Ok)                          \
  X(Cancel)
WARPLINE_TEXT_KEYS(SearchText, WARPLINE_SEARCH_TEXTS)

using SearchTexts = TextTable<SearchText>;

const SearchTexts& SearchTextsOf(Language language);

}  // namespace warpline::sim
