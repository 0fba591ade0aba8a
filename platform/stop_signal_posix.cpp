#include <pthread.h>
#include <signal.h>

#include "platform/stop_signal.h"

namespace warpline {
namespace {

sigset_t StopSignals() {
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGINT);
  sigaddset(&signals, SIGTERM);
  return signals;
}

}  // namespace

// Blocked here, and so in every thread started later, the signals are left for Wait to fetch.
StopSignal::StopSignal() {
  const sigset_t signals = StopSignals();
  pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

void StopSignal::Wait() {
  const sigset_t signals = StopSignals();
  int received = 0;
  sigwait(&signals, &received);
}

bool StopSignal::WaitFor(std::chrono::milliseconds time) {
  const sigset_t signals = StopSignals();
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(time);
  const timespec limit{seconds.count(), static_cast<long>((time - seconds).count() * 1'000'000)};
  return sigtimedwait(&signals, nullptr, &limit) > 0;
}

}  // namespace warpline
