#include "ui/LSSmain_menu.h"

#include <array>
#include <map>

#include "ui/wx_text.h"

namespace warpline {
namespace {

constexpr int kFirstId = wxID_HIGHEST + 100;

// "ON" and "OFF" are written so in both languages; the catalogue has no text for them.
constexpr std::array<MenuRow, 28> kMenuRows{{
    {"menu_file", "", 155, "", wxITEM_DROPDOWN},
    {"menu_file_open", "menu_file", 151, "", wxITEM_NORMAL},
    {"menu_file_save", "menu_file", 152, "", wxITEM_NORMAL},
    {"menu_file_saveas", "menu_file", 153, "", wxITEM_NORMAL},
    {"", "menu_file", 0, "", wxITEM_SEPARATOR},
    {"menu_file_exit", "menu_file", 156, "", wxITEM_NORMAL},
    {"menu_opt", "", 116, "", wxITEM_DROPDOWN},
    {"menu_opt_auto", "menu_opt", 161, "", wxITEM_DROPDOWN},
    {"menu_opt_auto_on", "menu_opt_auto", 0, "ON", wxITEM_RADIO},
    {"menu_opt_auto_off", "menu_opt_auto", 0, "OFF", wxITEM_RADIO},
    {"", "menu_opt", 0, "", wxITEM_SEPARATOR},
    {"menu_opt_simple", "menu_opt", 218, "", wxITEM_RADIO},
    {"menu_opt_detailed", "menu_opt", 219, "", wxITEM_RADIO},
    {"", "menu_opt", 0, "", wxITEM_SEPARATOR},
    {"menu_opt_projection", "menu_opt", 214, "", wxITEM_DROPDOWN},
    {"menu_opt_ud_reverse", "menu_opt_projection", 215, "", wxITEM_CHECK},
    {"menu_opt_lr_reverse", "menu_opt_projection", 216, "", wxITEM_CHECK},
    {"", "menu_opt", 0, "", wxITEM_SEPARATOR},
    {"menu_opt_pjmode", "menu_opt", 114, "", wxITEM_NORMAL},
    {"menu_opt_setting", "menu_opt", 113, "", wxITEM_NORMAL},
    {"menu_disp", "", 157, "", wxITEM_DROPDOWN},
    {"menu_disp_magnification", "menu_disp", 158, "", wxITEM_RADIO},
    {"menu_disp_regular", "menu_disp", 159, "", wxITEM_RADIO},
    {"menu_disp_small", "menu_disp", 160, "", wxITEM_RADIO},
    {"menu_help", "", 117, "", wxITEM_DROPDOWN},
    {"menu_help_doc", "menu_help", 213, "", wxITEM_NORMAL},
    {"", "menu_help", 0, "", wxITEM_SEPARATOR},
    {"menu_help_about", "menu_help", 118, "", wxITEM_NORMAL},
}};

wxString MenuCaption(const LSSglobal& global, const MenuRow& row) {
  return row.caption == 0 ? wxString(row.literal) : CaptionOf(global, row.caption);
}

}  // namespace

std::span<const MenuRow> MenuRows() {
  return kMenuRows;
}

int MenuId(std::string_view name) {
  for (std::size_t i = 0; i < kMenuRows.size(); ++i) {
    if (!name.empty() && kMenuRows[i].name == name) return kFirstId + static_cast<int>(i);
  }
  return wxID_NONE;
}

std::string_view MenuName(int id) {
  const int index = id - kFirstId;
  if (index < 0 || index >= static_cast<int>(kMenuRows.size())) return {};
  return kMenuRows[static_cast<std::size_t>(index)].name;
}

wxMenuBar* CreateMenuBar(const LSSglobal& global) {
  auto* bar = new wxMenuBar;
  std::map<std::string_view, wxMenu*> menus;
  for (const MenuRow& row : kMenuRows) {
    const std::string_view parent = row.parent;
    if (row.kind != wxITEM_DROPDOWN) {
      const int id = row.kind == wxITEM_SEPARATOR ? wxID_SEPARATOR : MenuId(row.name);
      menus.at(parent)->Append(id, MenuCaption(global, row), "", row.kind);
      continue;
    }
    wxMenu* menu = menus[row.name] = new wxMenu;
    if (parent.empty()) {
      bar->Append(menu, MenuCaption(global, row));
    } else {
      menus.at(parent)->Append(MenuId(row.name), MenuCaption(global, row), menu);
    }
  }
  return bar;
}

}  // namespace warpline
