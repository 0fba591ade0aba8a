#include <windows.h>

#include "platform/stop_signal.h"

namespace warpline {
namespace {

HANDLE StopEvent() {
  static const HANDLE event = ::CreateEventW(nullptr, TRUE, FALSE, nullptr);
  return event;
}

// Windows ends the process when this returns after the console was closed, so it gives the main
// thread the few seconds that it may take.
BOOL WINAPI OnConsoleEvent(DWORD kind) {
  ::SetEvent(StopEvent());
  if (kind == CTRL_CLOSE_EVENT) ::Sleep(4000);
  return TRUE;
}

}  // namespace

StopSignal::StopSignal() {
  StopEvent();
  ::SetConsoleCtrlHandler(OnConsoleEvent, TRUE);
}

void StopSignal::Wait() {
  ::WaitForSingleObject(StopEvent(), INFINITE);
}

bool StopSignal::WaitFor(std::chrono::milliseconds time) {
  return ::WaitForSingleObject(StopEvent(), static_cast<DWORD>(time.count())) == WAIT_OBJECT_0;
}

}  // namespace warpline
