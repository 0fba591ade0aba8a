#include <windows.h>

#include "platform/console.h"

namespace warpline {

void PrepareConsole() {
  SetConsoleOutputCP(CP_UTF8);
}

bool ErrorsAreSeen() {
  const auto errors = GetStdHandle(STD_ERROR_HANDLE);
  DWORD mode = 0;
  return GetConsoleMode(errors, &mode) != 0 &&
         SetConsoleMode(errors, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

}  // namespace warpline
