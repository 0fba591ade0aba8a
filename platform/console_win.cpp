#include <windows.h>

#include "platform/console.h"

namespace warpline {

void PrepareConsole() {
  SetConsoleOutputCP(CP_UTF8);
}

bool ErrorsAreSeen() {
  DWORD mode = 0;
  return GetConsoleMode(GetStdHandle(STD_ERROR_HANDLE), &mode) != 0;
}

}  // namespace warpline
