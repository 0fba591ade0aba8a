#pragma once

#include <cstdint>

#include "core/correction.h"
#include "core/register_set.h"

// What the tool knows of the projector: from what it sent, and from what it was told.

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

// What a projector tells of itself.
struct ProjectorReport {
  PanelSize panel;
  int model_class = 0;    // 0 for one that knows none
  std::int16_t mode = 0;  // the picture mode as it tells it, 0..255
};

}  // namespace warpline
