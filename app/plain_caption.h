#pragma once

#include <string>

#include "core/LSSglobal.h"
#include "core/catalogue.h"

namespace warpline {

// A caption of the catalogue as a name: without its access key, and without the dots of one that
// opens a dialog.
std::string NameOf(const LSSglobal& global, int number);
std::string NameOf(const LSSglobal& global, ToolText key);

// The same without ampersands, for menus, where one would mark an access key.
std::string PlainCaption(const LSSglobal& global, int number);

}  // namespace warpline
