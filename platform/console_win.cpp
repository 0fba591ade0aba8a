#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <cstdio>

#include "platform/console.h"
#include "platform/wide_text_win.h"

namespace warpline {

void PrepareConsole() {
  SetConsoleOutputCP(CP_UTF8);
}

bool PrintToStarter(const std::string& text) {
  HANDLE output = GetStdHandle(STD_OUTPUT_HANDLE);
  DWORD written = 0;
  if (output != nullptr && output != INVALID_HANDLE_VALUE) {
    return WriteFile(output, text.data(), static_cast<DWORD>(text.size()), &written, nullptr) != 0;
  }
  if (AttachConsole(ATTACH_PARENT_PROCESS) == 0) return false;
  output = CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_WRITE, nullptr,
                       OPEN_EXISTING, 0, nullptr);
  if (output == INVALID_HANDLE_VALUE) return false;
  const std::wstring wide = L"\n" + WideOf(text);
  const bool printed =
      WriteConsoleW(output, wide.data(), static_cast<DWORD>(wide.size()), &written, nullptr) != 0;
  CloseHandle(output);
  return printed;
}

void MakeInputBinary() {
  _setmode(_fileno(stdin), _O_BINARY);
}

void MakeOutputBinary() {
  std::fflush(stdout);
  _setmode(_fileno(stdout), _O_BINARY);
}

bool ErrorsAreSeen() {
  const auto errors = GetStdHandle(STD_ERROR_HANDLE);
  DWORD mode = 0;
  return GetConsoleMode(errors, &mode) != 0 &&
         SetConsoleMode(errors, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

}  // namespace warpline
