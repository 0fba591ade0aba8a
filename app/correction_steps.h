#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "app/file_content.h"
#include "app/value_history.h"
#include "core/LSSglobal.h"

// The steps in which a user makes a correction.

namespace warpline {

// A file and what stands in it.
struct SavedDocument {
  std::filesystem::path file;                // empty: none
  std::optional<CorrectionData> correction;  // none: nothing is saved
  std::optional<FileContent> content;        // of the file as it was read or written
};

struct CorrectionStep {
  std::string name;                   // "Bottom 40%", "Initialize", as a menu item says it
  int group = -1;                     // the group of sliders that it concerns; -1: none
  std::optional<SavedDocument> left;  // by choosing a screen type
};

using CorrectionHistory = ValueHistory<CorrectionData, CorrectionStep>;

// Gives an axis parameters and curve of the other one, as if the picture were mirrored at its
// diagonal. The optical centre changes its sign where the two are projected differently; what the
// other axis's sliders do not reach is held to their range.
void CopyAxis(CorrectionData& correction, Axis from, Axis to);
void SwapAxes(CorrectionData& correction);

}  // namespace warpline
