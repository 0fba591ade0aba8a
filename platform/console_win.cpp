#include <windows.h>

#include "platform/console.h"

namespace warpline {

void PrepareConsole() {
  SetConsoleOutputCP(CP_UTF8);
}

}  // namespace warpline
