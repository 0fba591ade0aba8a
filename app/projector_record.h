#pragma once

#include "core/correction.h"

// What the tool knows of the projector from what it sent.

namespace warpline {

enum class Shown {
  kUnknown,     // nothing was sent yet, or a sequence broke in the middle
  kNone,        // no correction
  kCorrection,  // the one of the record
  kRegisters,   // registers that came from a file
};

struct ProjectorRecord {
  Shown shown = Shown::kUnknown;
  CorrectionData correction;  // while one is shown
  bool kept = false;          // the projector keeps what it shows

  bool Shows(const CorrectionData& wanted) const {
    return shown == Shown::kCorrection && correction == wanted;
  }
};

}  // namespace warpline
