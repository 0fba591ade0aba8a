#pragma once

#include <wx/menu.h>

#include <span>
#include <string_view>
#include <variant>

#include "core/LSSglobal.h"
#include "core/catalogue.h"
#include "core/message_numbers.h"

// The main window's menu bar as a table. Items are known by their product names.

namespace warpline {

struct MenuRow {
  const char* name;    // product name; "" is a separator
  const char* parent;  // name of the menu that holds it; "" for a menu of the bar
  std::variant<MessageId, ToolText> caption;  // a separator's says nothing
  wxItemKind kind;                            // wxITEM_DROPDOWN: a menu of its own
};

std::span<const MenuRow> MenuRows();

// The toolkit's identifier of an item, and the name behind an identifier ("" when it is none of
// them).
int MenuId(std::string_view name);
std::string_view MenuName(int id);

// The whole bar with the captions of the language in force.
wxMenuBar* CreateMenuBar(const LSSglobal& global);

}  // namespace warpline
