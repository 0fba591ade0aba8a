#include "platform/console.h"

namespace warpline {

void PrepareConsole() {}

}  // namespace warpline
