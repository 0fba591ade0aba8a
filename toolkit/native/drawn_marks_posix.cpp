#include "toolkit/native/drawn_marks.h"

#include <cstddef>

#include "toolkit/native/toolkit_symbols_posix.h"

namespace warpline {
namespace {

// The arrow is two halves side by side, their slope about a pixel soft. A menu keeps its marks:
// what is drawn instead would not show there, and it opens after the start.
constexpr const char* kStyle =
    "radiobutton radio:checked, checkbutton check:checked { -gtk-icon-source: builtin; }"
    "combobox arrow {"
    "  -gtk-icon-source: none; min-width: 16px; background-repeat: no-repeat;"
    "  background-size: 6px 6px; background-position: 2px 50%, 8px 50%;"
    "  background-image: linear-gradient(to top right, transparent 43%, currentColor 57%),"
    "                    linear-gradient(to top left, transparent 43%, currentColor 57%); }";

constexpr unsigned kAboveTheTheme = 600;  // below the user's own style, as GTK counts

}  // namespace

void DrawMarks() {
  auto* screen = ToolkitFunction<void*()>("gdk_screen_get_default");
  auto* provider = ToolkitFunction<void*()>("gtk_css_provider_new");
  auto* load = ToolkitFunction<int(void*, const char*, std::ptrdiff_t, void**)>(
      "gtk_css_provider_load_from_data");
  auto* add =
      ToolkitFunction<void(void*, void*, unsigned)>("gtk_style_context_add_provider_for_screen");
  auto* release = ToolkitFunction<void(void*)>("g_object_unref");
  if (screen == nullptr || provider == nullptr || load == nullptr || add == nullptr ||
      release == nullptr || screen() == nullptr)
    return;
  void* style = provider();
  load(style, kStyle, -1, nullptr);
  add(screen(), style, kAboveTheTheme);
  release(style);
}

}  // namespace warpline
