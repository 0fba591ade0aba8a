#include "cli/console.h"

namespace warpline {

void PrepareConsole() {}

}  // namespace warpline
