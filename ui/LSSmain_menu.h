#pragma once

#include <wx/menu.h>

#include <string>
#include <string_view>

#include "core/LSSglobal.h"

// The main window's menu bar. Items are known by their product names.

namespace warpline {

// The toolkit's identifier of an item, and the name behind an identifier ("" when it is none of
// them).
int MenuId(std::string_view name);
std::string_view MenuName(int id);

// The whole bar with the captions of the language in force.
wxMenuBar* CreateMenuBar(const LSSglobal& global);

// The caption of an item that names the step which it takes back or brings again, and its key.
// Without a step the item cannot be used.
void NameStep(wxMenuBar& bar, std::string_view item, const std::string& caption,
              const std::string& step, const char* key);

}  // namespace warpline
