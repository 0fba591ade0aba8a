#include "toolkit/native/open_file.h"

#include <wx/msw/wrapwin.h>
#include <wx/utils.h>

#include <array>
#include <string>

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

// The system tells at once whether there is a program for the page.
bool OpenInBrowser(const std::filesystem::path& page, const std::function<void()>& /*failed*/) {
  return wxLaunchDefaultApplication(page.wstring());
}

}  // namespace warpline
