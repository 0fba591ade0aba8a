#pragma once

#include <filesystem>
#include <functional>
#include <vector>

#include "app/connection_check.h"
#include "app/engine.h"
#include "link/projector_search.h"
#include "toolkit/displays.h"
#include "ui/file_chooser.h"
#include "ui/window_busy.h"

namespace warpline {

// What the main window and the dialogs that it opens work with; everything must outlive them.
struct MainParts {
  Engine& engine;
  WindowBusy& busy;  // the engine's
  FileChoosers choosers;
  FileChoosers shape_files;
  BeamseekProvider beamseek;
  std::filesystem::path application_data;                       // where settings and data are kept
  std::filesystem::path program_folder;                         // where the read-me files are
  std::function<bool(const std::filesystem::path&)> show_text;  // opens a text file, not waiting
  FileChoosers sheet_files;
  std::function<bool(const std::filesystem::path&)> show_page;  // opens a browser, not waiting
  decltype(FileChoosers::open) pictures = {};                   // chooses a picture of the user's
  RecordChooser choose_record = {};
  FileChoosers text_files = {};
  // How the check of the connection tries something.
  std::function<TrialRunner(std::function<bool()>)> trials = TrialInOwnProcess;
  std::function<std::vector<DisplayPlace>()> displays = Displays;
};

}  // namespace warpline
