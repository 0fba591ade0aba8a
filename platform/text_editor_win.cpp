#include <windows.h>

#include <array>
#include <string>

#include "platform/text_editor.h"

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

bool OpenInTextEditor(const std::filesystem::path& file) {
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

}  // namespace warpline
