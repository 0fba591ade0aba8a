#pragma once

#include <filesystem>
#include <functional>

#include "app/engine.h"

// What the Help menu opens: the read-me, a text file a language beside the program, and the user's
// guide, a page a language in the folder "docs" there.

namespace warpline {

using ShowFile = std::function<bool(const std::filesystem::path&)>;

// The files of the language in force.
std::filesystem::path ReadMeFile(const LSSglobal& global,
                                 const std::filesystem::path& program_folder);
std::filesystem::path GuideFile(const LSSglobal& global,
                                const std::filesystem::path& program_folder);

// Hands a file to show. A missing file, or one that could not be shown, gets a message.
void ShowHelpFile(const Engine& engine, const std::filesystem::path& file, const ShowFile& show);

// Says that no program shows this file.
void TellNotShown(const Engine& engine, const std::filesystem::path& file);

}  // namespace warpline
