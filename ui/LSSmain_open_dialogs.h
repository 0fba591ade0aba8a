#pragma once

#include <filesystem>
#include <functional>

#include "app/projector_commands.h"
#include "core/LSSglobal.h"
#include "core/messages.h"
#include "files/LSSfile.h"
#include "link/projector_search.h"
#include "ui/LSSmain_dialogs.h"
#include "ui/file_chooser.h"
#include "ui/window_busy.h"

namespace warpline {

// What the dialogs work with; everything must outlive the functions made from it.
struct DialogParts {
  LSSglobal& global;
  LSSfile& files;
  ProjectorCommands& commands;
  const Messages& messages;
  MessageDisplay& display;
  WindowBusy& busy;
  BeamseekProvider beamseek;
  FileChoosers shape_files;
  std::filesystem::path application_data;
  std::filesystem::path program_folder;
  std::function<bool(const std::filesystem::path&)> show_text;
};

// The dialogs that the main window opens, each modal to it. The two that choose a connection write
// the settings file when they were confirmed, the owner's position included.
MainDialogs CreateMainDialogs(DialogParts parts);

}  // namespace warpline
