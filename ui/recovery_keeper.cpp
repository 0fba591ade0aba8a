#include "ui/recovery_keeper.h"

#include <algorithm>
#include <chrono>

namespace warpline {
namespace {

constexpr int kRestMilliseconds = 1000;

WallTime Now() {
  return std::chrono::system_clock::now();
}

}  // namespace

RecoveryKeeper::RecoveryKeeper(const Engine& engine, MainController& controller,
                               const std::filesystem::path& application_data)
    : engine_(engine),
      controller_(controller),
      application_data_(application_data),
      copy_(application_data) {
  controller_.WatchSteps([this] {
    NoteStep();
    Schedule();
  });
}

void RecoveryKeeper::Offer() {
  OfferUnsavedWork(engine_.global, engine_.messages, controller_, copy_, application_data_, Now());
}

void RecoveryKeeper::NoteMove() {
  if (!copy_.Due(Now())) StartOnce(kRestMilliseconds);
}

void RecoveryKeeper::End() {
  Stop();
  copy_.Remove();
}

void RecoveryKeeper::NoteStep() {
  copy_.NoteStep(engine_.global.Correction, engine_.global.CurrentFile,
                 controller_.HasUnsavedChanges());
}

void RecoveryKeeper::Schedule() {
  Stop();
  const auto due = copy_.Due(Now());
  if (due) StartOnce(std::max(static_cast<int>(due->count()), 1));
}

void RecoveryKeeper::Notify() {
  NoteStep();
  copy_.WriteIfDue(Now());
  Schedule();
}

}  // namespace warpline
