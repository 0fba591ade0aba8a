#pragma once

#include <filesystem>
#include <functional>
#include <string_view>

#include "core/LSSglobal.h"

class wxWindow;

// The system's dialogs for opening and saving. Each returns the chosen path, empty when the user
// cancelled.

namespace warpline {

// What the main window asks with; tests put their own in.
struct FileChoosers {
  std::function<std::filesystem::path(wxWindow* owner, const std::filesystem::path& folder)> open;
  std::function<std::filesystem::path(wxWindow* owner, const std::filesystem::path& folder,
                                      const std::filesystem::path& current)>
      save;
};

// The dialogs for one kind of file; type is its extension ("wlt"). Opening takes existing files
// alone; saving asks before a file is overwritten. global must outlive them.
FileChoosers SystemFileChoosers(const LSSglobal& global, std::string_view type);

// What a recording goes into, and whether it leaves addresses out. An empty path: cancelled.
struct RecordChoice {
  std::filesystem::path file;
  bool redacted = false;
};
using RecordChooser =
    std::function<RecordChoice(wxWindow* owner, const std::filesystem::path& folder)>;

// The system's dialog for saving, with a box of its own. global must outlive it.
RecordChooser SystemRecordChooser(const LSSglobal& global);

}  // namespace warpline
