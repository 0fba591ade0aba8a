#include <unistd.h>

#include "platform/console.h"

namespace warpline {

void PrepareConsole() {}

void MakeInputBinary() {}

void MakeOutputBinary() {}

bool ErrorsAreSeen() {
  return isatty(STDERR_FILENO) == 1;
}

}  // namespace warpline
