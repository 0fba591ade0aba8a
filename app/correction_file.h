#pragma once

#include <filesystem>

#include "core/LSSglobal.h"
#include "core/messages.h"
#include "files/LSSfile.h"

// Opening and saving the files that hold a whole correction. A failure was shown when one of these
// returns false; a fault while reading or writing becomes the run-time error report.

namespace warpline {

// Reads a correction data file. When all of it was read it becomes the live correction, its
// parameters the second copy too, and the file the current one; else all of these stay.
bool OpenCorrection(LSSfile& file, LSSglobal& global, const Messages& messages,
                    const std::filesystem::path& path);

// Reads a register file. When all of it was read its texts become the register texts. The
// correction and the current file stay.
bool OpenRegisters(LSSfile& file, LSSglobal& global, const Messages& messages,
                   const std::filesystem::path& path);

// Writes the live correction, and makes the file the current one.
bool SaveCorrection(const LSSfile& file, LSSglobal& global, const Messages& messages,
                    const std::filesystem::path& path);

}  // namespace warpline
