#include "toolkit/native/list_choice.h"

#include <wx/msw/wrapcctl.h>

#include <utility>

namespace warpline {
namespace {

struct Watch {
  ListChoice choice;
  bool open = false;
};

constexpr UINT_PTR kWatchId = 1;

int ChosenIn(const ListChoice& choice) {
  return static_cast<int>(SendMessageW(choice.list->GetHandle(), CB_GETCURSEL, 0, 0));
}

// What the list tells its owner. The choice may be told only behind the news that it has closed.
void OnNotice(Watch& watch, WORD what) {
  ListChoice& choice = watch.choice;
  if (what == CBN_DROPDOWN) {
    watch.open = true;
    choice.opened_at = ChosenIn(choice);
  }
  const int entry = ChosenIn(choice);
  if (what == CBN_SELENDOK && watch.open && entry != wxNOT_FOUND && entry == choice.opened_at) {
    choice.list->CallAfter([run = choice.chosen, entry] { run(entry); });
  }
  if (what == CBN_CLOSEUP) choice.list->CallAfter([&watch] { watch.open = false; });
}

LRESULT CALLBACK OnOwnerMessage(HWND owner, UINT message, WPARAM word, LPARAM sender, UINT_PTR id,
                                DWORD_PTR data) {
  auto* watch = reinterpret_cast<Watch*>(data);
  if (message == WM_NCDESTROY) {
    RemoveWindowSubclass(owner, &OnOwnerMessage, id);
    delete watch;
    return DefSubclassProc(owner, message, word, sender);
  }
  ListChoice& choice = watch->choice;
  if (message != WM_COMMAND || !choice.list ||
      reinterpret_cast<HWND>(sender) != choice.list->GetHandle()) {
    return DefSubclassProc(owner, message, word, sender);
  }
  OnNotice(*watch, HIWORD(word));
  choice.stepping = !watch->open;
  const LRESULT answer = DefSubclassProc(owner, message, word, sender);
  choice.stepping = false;
  return answer;
}

void BindKeys(wxChoice& list, Watch& watch) {
  list.Bind(wxEVT_CHAR_HOOK, [&watch](wxKeyEvent& event) {
    const int key = event.GetKeyCode();
    const bool enter = key == WXK_RETURN || key == WXK_NUMPAD_ENTER;
    const bool taken = !watch.open && ((enter && watch.choice.Confirm()) ||
                                       (key == WXK_ESCAPE && watch.choice.PutBack()));
    if (!taken) event.Skip();
  });
  list.Bind(wxEVT_KILL_FOCUS, [&watch](wxFocusEvent& event) {
    watch.choice.PutBack();
    event.Skip();
  });
}

}  // namespace

void WhenChosen(wxChoice& list, std::function<int()> in_force, std::function<void(int)> chosen) {
  auto* watch = new Watch{{&list, std::move(in_force), std::move(chosen)}};
  list.Bind(wxEVT_CHOICE,
            [watch](wxCommandEvent& event) { watch->choice.OnChoice(event.GetSelection()); });
  list.Bind(wxEVT_MOUSEWHEEL, [](wxMouseEvent&) {});
  BindKeys(list, *watch);
  SetWindowSubclass(list.GetParent()->GetHandle(), &OnOwnerMessage, kWatchId,
                    reinterpret_cast<DWORD_PTR>(watch));
}

}  // namespace warpline
