#pragma once

#include <wx/choice.h>

#include <functional>

// A list tells of a choice only when it changes something.

namespace warpline {

// Runs again(), after the list has closed, whenever the user opens it and chooses the entry that
// was chosen already. The list's own event stays silent then.
void WhenChosenAgain(wxChoice& list, std::function<void()> again);

}  // namespace warpline
