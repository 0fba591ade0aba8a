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

// Asks for a name (ask gets the one to offer) and completes one without extension with the type.
// Empty when the user cancelled. The dialog asks before an existing file is replaced, but only for
// the name that the user gave it: when the completed name is taken, it is offered there, so that
// the question is asked about it.
std::filesystem::path ChooseSaveName(
    const std::function<std::filesystem::path(const std::filesystem::path& offered)>& ask,
    const std::filesystem::path& offered, std::string_view type);

}  // namespace warpline
