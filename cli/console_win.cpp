#include <windows.h>

#include "cli/console.h"

namespace warpline {

void PrepareConsole() {
  SetConsoleOutputCP(CP_UTF8);
}

}  // namespace warpline
