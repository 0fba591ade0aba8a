#pragma once

#include "core/fault.h"
#include "core/messages.h"

namespace warpline {

// The outer edge of the arithmetic: a fault ends the work and becomes the run-time error report.
// Returns what the work returns, false after a fault.
template <typename Work>
bool ReportingFaults(const Messages& messages, const Work& work) {
  try {
    return work();
  } catch (const Fault& fault) {
    messages.ShowFault(fault.code());
    return false;
  }
}

}  // namespace warpline
