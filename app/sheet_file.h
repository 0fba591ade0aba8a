#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "app/engine.h"
#include "app/local_time.h"

// Makes the setup sheet of the correction that is being edited.

namespace warpline {

struct SheetRequest {
  std::string note;
  bool changed = false;         // the correction differs from its file
  bool ask_projector = false;   // nobody is asked in demo mode
  WallTime now;                 // the date of the sheet
  std::filesystem::path sheet;  // the file that WriteSetupSheet writes
};

// The sheet's page, its registers for the panel that was last reported. A note that is too long, a
// projector that does not answer and a fault of the arithmetic are told: then it is nothing.
std::optional<std::string> SetupSheetPage(Engine& engine, const SheetRequest& request);

// Writes it. A file that cannot be written is told too: then it is false and no file has changed.
bool WriteSetupSheet(Engine& engine, const SheetRequest& request);

}  // namespace warpline
