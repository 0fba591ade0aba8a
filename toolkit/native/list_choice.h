#pragma once

#include <wx/choice.h>
#include <wx/weakref.h>

#include <functional>

// A list tells of every entry that a key steps over, and of a choice only when it changes
// something.

namespace warpline {

// Runs chosen(entry) for what the user chooses on purpose: in the open list, the entry in force
// too, or by Enter after keys have stepped to another entry of the closed list. Such a step only
// shows the entry; Escape, and leaving the list, shows in_force() again. The wheel does nothing. To
// be called once a list.
void WhenChosen(wxChoice& list, std::function<int()> in_force, std::function<void(int)> chosen);

// What both systems' twins share.
struct ListChoice {
  wxWeakRef<wxChoice> list;
  std::function<int()> in_force;
  std::function<void(int)> chosen;
  bool stepping = false;        // the list is closed and tells of a key's step
  int opened_at = wxNOT_FOUND;  // the entry shown when the list opened

  bool IsPending() const {
    return list && !list->IsBeingDeleted() && list->GetSelection() != in_force();
  }
  void OnChoice(int entry) const {
    if (!stepping) chosen(entry);
  }
  // Both are false when no step is pending.
  bool Confirm() const {
    if (!IsPending()) return false;
    list->CallAfter([run = chosen, entry = list->GetSelection()] { run(entry); });
    return true;
  }
  bool PutBack() const {
    if (!IsPending()) return false;
    list->SetSelection(in_force());
    return true;
  }
};

}  // namespace warpline
