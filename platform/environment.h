#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

// What the system tells about its user, about the program and about how it was started.

namespace warpline {

// The user's default language is Japanese.
bool SystemLanguageIsJapanese();

// The user's roaming application-data folder.
std::filesystem::path ApplicationDataFolder();

// The running executable.
std::filesystem::path ProgramFile();

// Its folder.
std::filesystem::path ProgramFolder();

// The number under which the system knows this process.
std::uint64_t ProcessId();

// The value of an environment variable; nothing when it is not set.
std::optional<std::string> EnvironmentVariable(const char* name);

// The command line's words (UTF-8, the program's name left out).
std::vector<std::string> CommandLineWords(int argc, char** argv);

// The same for a program whose start belongs to somebody else.
std::vector<std::string> CommandLineWords();

}  // namespace warpline
