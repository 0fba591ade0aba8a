#include <unistd.h>

#include <cstdio>

#include "platform/console.h"

namespace warpline {

void PrepareConsole() {}

bool PrintToStarter(const std::string& text) {
  return std::fputs(text.c_str(), stdout) >= 0 && std::fflush(stdout) == 0;
}

void MakeInputBinary() {}

void MakeOutputBinary() {}

bool ErrorsAreSeen() {
  return isatty(STDERR_FILENO) == 1;
}

}  // namespace warpline
