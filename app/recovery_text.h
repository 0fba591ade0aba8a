#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "app/local_time.h"
#include "core/correction.h"

// What a recovery copy says: a correction data file, with comment lines that tell what else belongs
// to the work and that the copy is complete.

namespace warpline {

struct UnsavedWork {
  CorrectionData correction;
  std::filesystem::path file;  // the correction data file that it belongs to; empty: none
  WallTime changed;            // in whole seconds, from 1970 on
};

// The bytes of a copy. Nothing for a correction that no file can hold.
std::optional<std::string> RecoveryText(const UnsavedWork& work);

// The work behind the bytes of a copy. Nothing when they are not those of a whole one.
std::optional<UnsavedWork> WorkOf(std::string_view bytes);

// The correction in the bytes of a correction data file. Nothing when they do not hold one.
std::optional<CorrectionData> CorrectionOf(std::string_view bytes);

}  // namespace warpline
