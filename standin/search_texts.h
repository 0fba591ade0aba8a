#pragma once

#include <cstdint>

#include "core/texts.h"

// The texts of both stand-in libraries: the search's selection window, and what the control library
// says on standard error.

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
  X(Standby)                     \
  X(WarmingUp)                   \
  X(CoolingDown)                 \
  X(Unselectable)                \
  X(SearchAgain)                 \
  X(ReadMe)                      \
  X(Ok)                          \
  X(Cancel)                      \
  X(SimulatorsOnly)
WARPLINE_TEXT_KEYS(SearchText, WARPLINE_SEARCH_TEXTS)

using SearchTexts = TextTable<SearchText>;

const SearchTexts& SearchTextsOf(Language language);

// What the list says of a projector in that power state, which is counted as in PJRunningStatus.
SearchText StateOf(bool selectable, std::uint8_t power_state);

}  // namespace warpline::sim
