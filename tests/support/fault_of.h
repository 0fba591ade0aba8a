#pragma once

#include <optional>

#include "core/fault.h"

namespace warpline {

// The fault that ends the work; nothing when none does.
template <typename Work>
std::optional<FaultCode> FaultOf(Work work) {
  try {
    work();
  } catch (const Fault& fault) {
    return fault.code();
  }
  return std::nullopt;
}

}  // namespace warpline
