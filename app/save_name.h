#pragma once

#include <filesystem>
#include <functional>
#include <string_view>

#include "core/LSSglobal.h"

// Where the file dialogs start, and the name that a file is saved under.

namespace warpline {

// The folder of the current file; without one the folder for settings and data, made when it is
// missing.
std::filesystem::path DialogFolder(const LSSglobal& global,
                                   const std::filesystem::path& application_data);

// Asks for a name (ask gets the one to offer). One that ends neither in the type nor in another
// extension of three letters is completed with the type; one that got the type behind an extension
// of its own ("a.wlt.wlt", "a.WLR.wlt") loses it. Empty when the user cancelled. The dialog asks
// before an existing file is replaced, but only for the name that it returned: when another one is
// meant and taken, that one is offered, so that the question is asked about it. Choosing it there
// once more is an answer too.
std::filesystem::path ChooseSaveName(
    const std::function<std::filesystem::path(const std::filesystem::path& offered)>& ask,
    const std::filesystem::path& offered, std::string_view type);

}  // namespace warpline
