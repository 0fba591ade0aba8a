#include "toolkit/native/list_choice.h"

#include <cstdlib>
#include <string>
#include <string_view>
#include <utility>

#include "toolkit/native/toolkit_symbols_posix.h"

namespace warpline {
namespace {

constexpr int kAfter = 1;  // connect behind the widget's own handler

void Connect(void* widget, const char* signal, void (*handler)(), ListChoice* data, int flags = 0,
             void (*forget)(void*, void*) = nullptr) {
  using Connector =
      unsigned long(void*, const char*, void (*)(), void*, void (*)(void*, void*), int);
  auto* connect = ToolkitFunction<Connector>("g_signal_connect_data");
  if (connect != nullptr && widget != nullptr) {
    connect(widget, signal, handler, data, forget, flags);
  }
}

template <typename Handler>
void (*Plain(Handler* handler))() {
  return reinterpret_cast<void (*)()>(handler);
}

std::string_view TypeOf(void* widget) {
  auto* type_name = ToolkitFunction<const char*(void*)>("g_type_name_from_instance");
  return type_name == nullptr || widget == nullptr ? "" : type_name(widget);
}

void OnShow(void*, ListChoice* choice) {
  choice->opened_at = choice->list->GetSelection();
}

// path is the number of the chosen entry, as text. Of another one the list itself tells.
void OnActivate(void*, const char* path, ListChoice* choice) {
  if (std::to_string(choice->opened_at) != path) return;
  choice->list->CallAfter([run = choice->chosen, entry = choice->opened_at] { run(entry); });
}

void BeforeStep(void*, int, ListChoice* choice) {
  choice->stepping = true;
}
void AfterStep(void*, int, ListChoice* choice) {
  choice->stepping = false;
}

int OnKey(void*, void* event, ListChoice* choice) {
  auto* value_of = ToolkitFunction<int(void*, unsigned*)>("gdk_event_get_keyval");
  unsigned key = 0;
  if (value_of == nullptr || value_of(event, &key) == 0) return 0;
  constexpr unsigned kReturn = 0xFF0D;
  constexpr unsigned kKeypadEnter = 0xFF8D;
  constexpr unsigned kEscape = 0xFF1B;
  if (key == kReturn || key == kKeypadEnter) return choice->Confirm() ? 1 : 0;
  return key == kEscape && choice->PutBack() ? 1 : 0;
}

int OnLeave(void*, void*, ListChoice* choice) {
  choice->PutBack();
  return 0;
}

void Forget(void* choice, void*) {
  delete static_cast<ListChoice*>(choice);
}

// The button inside the list, which has the focus and takes the keys.
void ConnectButton(void* widget, void* choice) {
  auto* each_inside =
      ToolkitFunction<void(void*, void (*)(void*, void*), void*)>("gtk_container_forall");
  if (TypeOf(widget) == "GtkToggleButton") {
    auto* data = static_cast<ListChoice*>(choice);
    Connect(widget, "key-press-event", Plain(&OnKey), data);
    Connect(widget, "focus-out-event", Plain(&OnLeave), data);
  } else if (each_inside != nullptr &&
             (TypeOf(widget) == "GtkBox" || TypeOf(widget).ends_with("ComboBoxText"))) {
    each_inside(widget, &ConnectButton, choice);
  }
}

// The menu that the list shows; it is there from the first.
void* MenuOf(const wxChoice& list) {
  auto* accessible_of = ToolkitFunction<void*(void*)>("gtk_combo_box_get_popup_accessible");
  auto* widget_of = ToolkitFunction<void*(void*)>("gtk_accessible_get_widget");
  if (accessible_of == nullptr || widget_of == nullptr) return nullptr;
  void* accessible = accessible_of(list.GetHandle());
  return accessible == nullptr ? nullptr : widget_of(accessible);
}

}  // namespace

void WhenChosen(wxChoice& list, std::function<int()> in_force, std::function<void(int)> chosen) {
  auto* choice = new ListChoice{&list, std::move(in_force), std::move(chosen)};
  list.Bind(wxEVT_CHOICE,
            [choice](wxCommandEvent& event) { choice->OnChoice(event.GetSelection()); });
  list.Bind(wxEVT_MOUSEWHEEL, [](wxMouseEvent&) {});
  void* widget = list.GetHandle();
  Connect(widget, "move-active", Plain(&BeforeStep), choice, 0, &Forget);
  Connect(widget, "move-active", Plain(&AfterStep), choice, kAfter);
  ConnectButton(widget, choice);
  void* menu = MenuOf(list);
  if (TypeOf(menu) != "GtkTreeMenu") return;  // a theme may show it otherwise
  Connect(menu, "show", Plain(&OnShow), choice);
  Connect(menu, "menu-activate", Plain(&OnActivate), choice);
}

}  // namespace warpline
