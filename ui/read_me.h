#pragma once

#include <filesystem>
#include <functional>

#include "core/LSSglobal.h"
#include "core/messages.h"

// The user's guide: a text file a language beside the program.

namespace warpline {

// The guide of the language in force.
std::filesystem::path ReadMeFile(const LSSglobal& global,
                                 const std::filesystem::path& program_folder);

// Hands the guide to show_text. A missing file, or one that could not be shown, gets a message.
void ShowReadMe(const LSSglobal& global, const Messages& messages,
                const std::filesystem::path& program_folder,
                const std::function<bool(const std::filesystem::path&)>& show_text);

}  // namespace warpline
