#include <windows.h>
// The shell's headers build on the one above.
#include <shellapi.h>
#include <shlobj.h>

#include <memory>

#include "platform/environment.h"
#include "platform/wide_text_win.h"

namespace warpline {
namespace {

constexpr LANGID kJapanese = 0x0411;

}  // namespace

bool SystemLanguageIsJapanese() {
  return ::GetUserDefaultLangID() == kJapanese;
}

std::filesystem::path ApplicationDataFolder() {
  PWSTR folder = nullptr;
  const HRESULT result = ::SHGetKnownFolderPath(FOLDERID_RoamingAppData, 0, nullptr, &folder);
  const std::unique_ptr<wchar_t, decltype(&::CoTaskMemFree)> owner(folder, &::CoTaskMemFree);
  return SUCCEEDED(result) ? std::filesystem::path(folder) : std::filesystem::path();
}

std::filesystem::path ProgramFile() {
  std::wstring name(MAX_PATH, L'\0');
  for (;;) {
    const DWORD size = ::GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size()));
    if (size < name.size()) {
      name.resize(size);
      return name;
    }
    name.resize(name.size() * 2);
  }
}

std::filesystem::path ProgramFolder() {
  return ProgramFile().parent_path();
}

std::uint64_t ProcessId() {
  return ::GetCurrentProcessId();
}

std::optional<std::string> EnvironmentVariable(const char* name) {
  const std::wstring wide_name = WideOf(name);
  const DWORD size = ::GetEnvironmentVariableW(wide_name.c_str(), nullptr, 0);
  if (size == 0) return std::nullopt;
  std::wstring value(size, L'\0');
  value.resize(::GetEnvironmentVariableW(wide_name.c_str(), value.data(), size));
  return Utf8OfWide(value);
}

std::vector<std::string> CommandLineWords() {
  int count = 0;
  LPWSTR* words = ::CommandLineToArgvW(::GetCommandLineW(), &count);
  std::vector<std::string> result;
  for (int i = 1; i < count; ++i) result.push_back(Utf8OfWide(words[i]));
  ::LocalFree(words);
  return result;
}

// What the runtime hands over is not Unicode.
std::vector<std::string> CommandLineWords(int, char**) {
  return CommandLineWords();
}

}  // namespace warpline
