#include "ui/LSSmain_menu.h"

#include <array>
#include <map>
#include <variant>

#include "core/catalogue.h"
#include "core/message_numbers.h"
#include "core/tool_texts.h"
#include "ui/wx_text.h"

namespace warpline {
namespace {

constexpr int kFirstId = wxID_HIGHEST + 100;

struct MenuRow {
  const char* name;    // product name; "" is a separator
  const char* parent;  // name of the menu that holds it; "" for a menu of the bar
  std::variant<MessageId, ToolText> caption;  // a separator's says nothing
  wxItemKind kind;                            // wxITEM_DROPDOWN: a menu of its own
  const char* keys = "";                      // that do the same, as the toolkit writes them
};

constexpr auto kMenuRows = std::to_array<MenuRow>({
    {"menu_file", "", kMsgMenuFile, wxITEM_DROPDOWN},
    {"menu_file_open", "menu_file", kMsgMenuOpen, wxITEM_NORMAL, "Ctrl+O"},
    {"menu_file_save", "menu_file", kMsgMenuSave, wxITEM_NORMAL, "Ctrl+S"},
    {"menu_file_saveas", "menu_file", kMsgMenuSaveAs, wxITEM_NORMAL, "Ctrl+Shift+S"},
    {"", "menu_file", {}, wxITEM_SEPARATOR},
    {"menu_file_sheet", "menu_file", ToolText::kMenuSheet, wxITEM_NORMAL},
    {"", "menu_file", {}, wxITEM_SEPARATOR},
    {"menu_file_exit", "menu_file", kMsgMenuExit, wxITEM_NORMAL},
    {"menu_edit", "", ToolText::kMenuEdit, wxITEM_DROPDOWN},
    {"menu_edit_undo", "menu_edit", ToolText::kMenuUndo, wxITEM_NORMAL},
    {"menu_edit_redo", "menu_edit", ToolText::kMenuRedo, wxITEM_NORMAL},
    {"", "menu_edit", {}, wxITEM_SEPARATOR},
    {"menu_edit_copy_v", "menu_edit", ToolText::kMenuCopyVertical, wxITEM_NORMAL},
    {"menu_edit_copy_h", "menu_edit", ToolText::kMenuCopyHorizontal, wxITEM_NORMAL},
    {"menu_edit_swap", "menu_edit", ToolText::kMenuSwap, wxITEM_NORMAL},
    {"", "menu_edit", {}, wxITEM_SEPARATOR},
    {"menu_edit_compare", "menu_edit", ToolText::kMenuCompare, wxITEM_CHECK},
    {"menu_opt", "", kMsgMenuOptions, wxITEM_DROPDOWN},
    {"menu_opt_auto", "menu_opt", kMsgRealTime, wxITEM_DROPDOWN},
    {"menu_opt_auto_on", "menu_opt_auto", ToolText::kRealTimeOn, wxITEM_RADIO},
    {"menu_opt_auto_off", "menu_opt_auto", ToolText::kRealTimeOff, wxITEM_RADIO},
    {"", "menu_opt", {}, wxITEM_SEPARATOR},
    {"menu_opt_simple", "menu_opt", kMsgMenuSimpleMode, wxITEM_RADIO},
    {"menu_opt_detailed", "menu_opt", kMsgMenuDetailedMode, wxITEM_RADIO},
    {"", "menu_opt", {}, wxITEM_SEPARATOR},
    {"menu_opt_projection", "menu_opt", kMsgMenuProjectionOrientation, wxITEM_DROPDOWN},
    {"menu_opt_ud_reverse", "menu_opt_projection", kMsgMenuProjectDownward, wxITEM_CHECK},
    {"menu_opt_lr_reverse", "menu_opt_projection", kMsgMenuProjectRight, wxITEM_CHECK},
    {"", "menu_opt", {}, wxITEM_SEPARATOR},
    {"menu_opt_pjmode", "menu_opt", kMsgMenuModeSettings, wxITEM_NORMAL},
    {"menu_opt_setting", "menu_opt", kMsgMenuCommunicationSettings, wxITEM_NORMAL},
    {"", "menu_opt", {}, wxITEM_SEPARATOR},
    {"menu_opt_picture", "menu_opt", ToolText::kMenuPicture, wxITEM_DROPDOWN},
    {"menu_opt_picture_off", "menu_opt_picture", ToolText::kMenuPictureOff, wxITEM_CHECK},
    {"menu_opt_photo", "menu_opt", ToolText::kMenuPhotograph, wxITEM_NORMAL},
    {"menu_disp", "", kMsgMenuDisplay, wxITEM_DROPDOWN},
    {"menu_disp_magnification", "menu_disp", kMsgMenuMagnification, wxITEM_RADIO},
    {"menu_disp_regular", "menu_disp", kMsgMenuRegular, wxITEM_RADIO},
    {"menu_disp_small", "menu_disp", kMsgMenuSmall, wxITEM_RADIO},
    {"menu_help", "", kMsgMenuHelp, wxITEM_DROPDOWN},
    {"menu_help_doc", "menu_help", kMsgMenuReadMe, wxITEM_NORMAL, "F1"},
    {"menu_help_guide", "menu_help", ToolText::kMenuGuide, wxITEM_NORMAL},
    {"", "menu_help", {}, wxITEM_SEPARATOR},
    {"menu_help_about", "menu_help", kMsgMenuAbout, wxITEM_NORMAL},
    {"", "menu_help", {}, wxITEM_SEPARATOR},
    {"menu_help_record", "menu_help", ToolText::kMenuRecord, wxITEM_CHECK},
    {"menu_help_check", "menu_help", ToolText::kMenuCheck, wxITEM_NORMAL},
});

wxString MenuCaption(const LSSglobal& global, const MenuRow& row) {
  return std::visit([&global](auto caption) { return CaptionOf(global, caption); }, row.caption);
}

// The keys stand behind the caption, on the right of the menu.
wxString MenuLabel(const LSSglobal& global, const MenuRow& row) {
  const wxString caption = MenuCaption(global, row);
  return *row.keys == '\0' ? caption : caption + "\t" + row.keys;
}

}  // namespace

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

void NameStep(wxMenuBar& bar, std::string_view item, const std::string& caption,
              const std::string& step, const char* key) {
  wxString label = WxText(FilledText(caption, {step}));
  label.Trim();
  bar.SetLabel(MenuId(item), label + "\t" + key);
  bar.Enable(MenuId(item), !step.empty());
}

wxMenuBar* CreateMenuBar(const LSSglobal& global) {
  auto* bar = new wxMenuBar;
  std::map<std::string_view, wxMenu*> menus;
  for (const MenuRow& row : kMenuRows) {
    const std::string_view parent = row.parent;
    if (row.kind != wxITEM_DROPDOWN) {
      const int id = row.kind == wxITEM_SEPARATOR ? wxID_SEPARATOR : MenuId(row.name);
      menus.at(parent)->Append(id, MenuLabel(global, row), "", row.kind);
      continue;
    }
    wxMenu* menu = menus[row.name] = new wxMenu;
    if (parent.empty()) {
      bar->Append(menu, MenuCaption(global, row));
    } else {
      menus.at(parent)->Append(MenuId(row.name), MenuCaption(global, row), menu);
    }
  }
  bar->FindItem(MenuId("menu_edit_redo"))
      ->AddExtraAccel(wxAcceleratorEntry(wxACCEL_CTRL | wxACCEL_SHIFT, 'Z'));
  return bar;
}

}  // namespace warpline
