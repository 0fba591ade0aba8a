#include "toolkit/native/display_sleep.h"

#include <wx/msw/wrapwin.h>

namespace warpline {

struct DisplaysAwake::Request {};

DisplaysAwake::DisplaysAwake(const char*) {
  SetThreadExecutionState(ES_CONTINUOUS | ES_DISPLAY_REQUIRED | ES_SYSTEM_REQUIRED);
}

DisplaysAwake::~DisplaysAwake() {
  SetThreadExecutionState(ES_CONTINUOUS);
}

}  // namespace warpline
