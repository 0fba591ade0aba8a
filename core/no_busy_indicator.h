#pragma once

#include "core/interfaces.h"

namespace warpline {

// Where nobody waits in front of a window: shows no hourglass and is never cancelled.
class NoBusyIndicator : public BusyIndicator {
 public:
  void BeginBusy(BusyKind) override {}
  void EndBusy() override {}
  void ProcessPendingEvents() override {}
  void ShowStep(int, int) override {}
  void EndSteps() override {}
  bool Cancelled() const override { return false; }
};

}  // namespace warpline
