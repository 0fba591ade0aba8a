#pragma once

#include <filesystem>
#include <string_view>

#include "core/LSSglobal.h"
#include "core/messages.h"

// The file layer: one read loop and one save sequence for all four kinds of text file. Every
// failure is shown to the user here and returned as false. A fault of the arithmetic (digits that
// do not fit their type) passes through.

namespace warpline {

// Type words, also the file extensions.
inline constexpr std::string_view kTypeIni = "ini";
inline constexpr std::string_view kTypeWlt = "wlt";
inline constexpr std::string_view kTypeWls = "wls";
inline constexpr std::string_view kTypeWlr = "wlr";

class LSSfile {
 public:
  // Both must outlive this object. The staging copy starts as the reset model.
  LSSfile(LSSglobal& global, const Messages& messages);

  // Reads a file: "ini" into the settings (only when the whole file was read), "wlt" into the
  // staging copy, "wls" into the staging copy's horizontal curve, "wlr" into the register texts of
  // LSSglobal (emptied first). A missing settings file is false without a message.
  bool OpenDataFile(const std::filesystem::path& path, std::string_view type);

  // Writes a file: the settings, the live correction, the staging copy's horizontal curve, or the
  // register texts. The old file stays whole when anything fails, and no other file is left behind.
  bool SaveDataFile(const std::filesystem::path& path, std::string_view type);

  // What the last read left; not cleared between reads.
  CorrectionData& Staging() { return staging_; }

  // Puts the staging copy back to the reset model.
  void ResetStaging();

 private:
  LSSglobal& global_;
  const Messages& messages_;
  CorrectionData staging_;
};

}  // namespace warpline
