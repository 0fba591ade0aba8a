#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <cstdio>

#include "platform/console.h"

namespace warpline {

void PrepareConsole() {
  SetConsoleOutputCP(CP_UTF8);
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
