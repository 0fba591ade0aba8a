#include "ui/native/chosen_again.h"

#include <string>
#include <string_view>

#include "ui/native/toolkit_symbols_posix.h"

namespace warpline {
namespace {

struct Watch {
  wxChoice* list;
  std::function<void()> again;
  int before = wxNOT_FOUND;  // the entry chosen when the list opened
};

void OnShow(void*, void* data) {
  auto* watch = static_cast<Watch*>(data);
  watch->before = watch->list->GetSelection();
}

// path is the number of the chosen entry, as text.
void OnActivate(void*, const char* path, void* data) {
  auto* watch = static_cast<Watch*>(data);
  if (std::to_string(watch->before) == path) watch->list->CallAfter(watch->again);
}

void Forget(void* data, void*) {
  delete static_cast<Watch*>(data);
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

void WhenChosenAgain(wxChoice& list, std::function<void()> again) {
  using Connect = unsigned long(void*, const char*, void*, void*, void (*)(void*, void*), int);
  auto* connect = ToolkitFunction<Connect>("g_signal_connect_data");
  auto* type_name = ToolkitFunction<const char*(void*)>("g_type_name_from_instance");
  void* menu = MenuOf(list);
  if (connect == nullptr || type_name == nullptr || menu == nullptr) return;
  if (std::string_view(type_name(menu)) != "GtkTreeMenu") return;  // a theme may show it otherwise
  auto* watch = new Watch{&list, std::move(again)};
  connect(menu, "show", reinterpret_cast<void*>(&OnShow), watch, nullptr, 0);
  connect(menu, "menu-activate", reinterpret_cast<void*>(&OnActivate), watch, &Forget, 0);
}

}  // namespace warpline
