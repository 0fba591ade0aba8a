#pragma once

#include <optional>

#include "core/fault.h"
#include "core/messages.h"

namespace warpline {

// The outer edge of the arithmetic: a fault ends the work and becomes the run-time error report.
// Whatever happens, end runs between the two. True when both return true and there was no fault.
template <typename Work, typename End>
bool ReportingFaults(const Messages& messages, const Work& work, const End& end) {
  std::optional<FaultCode> fault;
  bool done = false;
  try {
    done = work();
  } catch (const Fault& thrown) {
    fault = thrown.code();
  }
  const bool ended = end();
  if (fault) messages.ShowFault(*fault);
  return done && ended;
}

// Work that leaves nothing to be ended.
template <typename Work>
bool ReportingFaults(const Messages& messages, const Work& work) {
  return ReportingFaults(messages, work, [] { return true; });
}

}  // namespace warpline
