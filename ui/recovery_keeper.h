#pragma once

#include <wx/timer.h>

#include <filesystem>

#include "app/engine.h"
#include "app/main_controller.h"
#include "app/recovery.h"

// Keeps the recovery copy while the main window is open.

namespace warpline {

class RecoveryKeeper : private wxTimer {
 public:
  // Both must outlive this object.
  RecoveryKeeper(const Engine& engine, MainController& controller,
                 const std::filesystem::path& application_data);

  // Asks about work that was left unsaved.
  void Offer();

  // A slider was moved, which may be no step yet: it is kept when the hand has rested for a second.
  void NoteMove();

  // The tool ends as it should.
  void End();

 private:
  void NoteStep();
  void Schedule();
  void Notify() override;

  const Engine& engine_;
  MainController& controller_;
  std::filesystem::path application_data_;
  RecoveryCopy copy_;
};

}  // namespace warpline
