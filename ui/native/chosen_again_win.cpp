#include <wx/msw/wrapcctl.h>

#include "ui/native/chosen_again.h"

namespace warpline {
namespace {

struct Watch {
  wxChoice* list;
  std::function<void()> again;
  int before = wxNOT_FOUND;  // the entry chosen when the list opened; none while it is closed
};

constexpr UINT_PTR kWatchId = 1;

// The list's owner is told what happens to the list.
LRESULT CALLBACK OnOwnerMessage(HWND owner, UINT message, WPARAM word, LPARAM sender, UINT_PTR id,
                                DWORD_PTR data) {
  auto* watch = reinterpret_cast<Watch*>(data);
  if (message == WM_NCDESTROY) {
    RemoveWindowSubclass(owner, &OnOwnerMessage, id);
    delete watch;
    return DefSubclassProc(owner, message, word, sender);
  }
  if (message != WM_COMMAND || reinterpret_cast<HWND>(sender) != watch->list->GetHandle()) {
    return DefSubclassProc(owner, message, word, sender);
  }
  const int chosen = static_cast<int>(SendMessageW(watch->list->GetHandle(), CB_GETCURSEL, 0, 0));
  const WORD what = HIWORD(word);
  if (what == CBN_DROPDOWN) watch->before = chosen;
  if (what == CBN_SELENDOK && chosen != wxNOT_FOUND && chosen == watch->before) {
    watch->list->CallAfter(watch->again);
  }
  if (what == CBN_SELENDOK || what == CBN_SELENDCANCEL) watch->before = wxNOT_FOUND;
  return DefSubclassProc(owner, message, word, sender);
}

}  // namespace

void WhenChosenAgain(wxChoice& list, std::function<void()> again) {
  auto* watch = new Watch{&list, std::move(again)};
  SetWindowSubclass(list.GetParent()->GetHandle(), &OnOwnerMessage, kWatchId,
                    reinterpret_cast<DWORD_PTR>(watch));
}

}  // namespace warpline
