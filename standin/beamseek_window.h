#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "core/texts.h"
#include "link/beamseek.h"

// The selection window of the stand-in search library, as the library sees it. All calls come from
// the thread of the tool's windows.

namespace warpline::sim {

// What a search has found: the tool's record, and what that has no field for.
struct SearchResult {
  csResData Record{};
  // Of the projectors in the record, as PJRunningStatus counts.
  std::array<std::uint8_t, kMostSearchProjectors> PowerState{};
};

// What a window asks and tells. Valid as long as the window lives.
struct SelectionWindowHost {
  // The projectors of a search that has ended; nothing while it runs and once they were taken.
  std::function<std::optional<SearchResult>()> TakeResult;
  // The user's decision, a ConnectSelectCode; index is that of the chosen projector.
  std::function<void(std::uint32_t code, std::uint32_t index)> Notify;
};

class SelectionWindow {
 public:
  virtual ~SelectionWindow() = default;

  // A search has begun: shows that, and its result as soon as the host has it. last_address is the
  // projector to offer first.
  virtual void ShowSearching(const std::string& last_address) = 0;

  // Lets the user decide again after a notification.
  virtual void GoOn() = 0;
};

// Makes a window in the language; null when there can be none in this process.
using SelectionWindowFactory =
    std::function<std::unique_ptr<SelectionWindow>(SelectionWindowHost host, Language language)>;

// The factory of this build: windows by the tool's own toolkit, or none.
std::unique_ptr<SelectionWindow> MakeSelectionWindow(SelectionWindowHost host, Language language);

}  // namespace warpline::sim
