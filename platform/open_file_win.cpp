#include <windows.h>

#include <shellapi.h>

#include <array>
#include <string>

#include "platform/open_file.h"

namespace warpline {
namespace {

// The editor of the system folder itself, never one of that name that lies in the working folder.
std::wstring NotepadPath() {
  std::array<wchar_t, MAX_PATH> folder{};
  const UINT length = GetSystemDirectoryW(folder.data(), static_cast<UINT>(folder.size()));
  if (length == 0 || length >= folder.size()) return {};
  return std::wstring(folder.data(), length) + L"\\notepad.exe";
}

}  // namespace

bool OpenInTextEditor(const std::filesystem::path& file, const std::function<void()>& /*failed*/) {
  const std::wstring notepad = NotepadPath();
  if (notepad.empty()) return false;
  std::wstring command = L"\"" + notepad + L"\" \"" + file.wstring() + L"\"";
  STARTUPINFOW start{};
  start.cb = sizeof(start);
  PROCESS_INFORMATION process{};
  if (CreateProcessW(notepad.c_str(), command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                     &start, &process) == FALSE) {
    return false;
  }
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  return true;
}

// The system tells at once whether there is a program for the page, as a number above 32.
bool OpenInBrowser(const std::filesystem::path& page, const std::function<void()>& /*failed*/) {
  constexpr INT_PTR kLastError = 32;
  const HINSTANCE opened =
      ShellExecuteW(nullptr, L"open", page.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
  return reinterpret_cast<INT_PTR>(opened) > kLastError;
}

}  // namespace warpline
