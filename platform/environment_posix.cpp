#include <unistd.h>

#include <cstdlib>
#include <fstream>

#include "platform/environment.h"

namespace warpline {

bool SystemLanguageIsJapanese() {
  for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    const std::optional<std::string> value = EnvironmentVariable(name);
    if (value && !value->empty()) return value->starts_with("ja");
  }
  return false;
}

std::filesystem::path ApplicationDataFolder() {
  const std::optional<std::string> configured = EnvironmentVariable("XDG_CONFIG_HOME");
  if (configured && configured->starts_with("/")) return *configured;
  return std::filesystem::path(EnvironmentVariable("HOME").value_or("/")) / ".config";
}

std::filesystem::path ProgramFile() {
  std::error_code error;
  return std::filesystem::read_symlink("/proc/self/exe", error);
}

std::filesystem::path ProgramFolder() {
  return ProgramFile().parent_path();
}

std::uint64_t ProcessId() {
  return static_cast<std::uint64_t>(::getpid());
}

std::optional<std::string> EnvironmentVariable(const char* name) {
  const char* value = std::getenv(name);
  if (value == nullptr) return std::nullopt;
  return value;
}

std::vector<std::string> CommandLineWords(int argc, char** argv) {
  return argc > 0 ? std::vector<std::string>(argv + 1, argv + argc) : std::vector<std::string>();
}

// Each word ends with a zero; the first one is the program's name.
std::vector<std::string> CommandLineWords() {
  std::ifstream line("/proc/self/cmdline", std::ios::binary);
  std::vector<std::string> words;
  for (std::string word; std::getline(line, word, '\0');) words.push_back(word);
  if (!words.empty()) words.erase(words.begin());
  return words;
}

}  // namespace warpline
