#pragma once

#include <filesystem>
#include <string_view>

#include "core/messages.h"
#include "files/formats.h"

// The file layer: one read loop and one save sequence for all four kinds of text file. Every
// failure is shown to the user here and returned as false. A fault of the arithmetic (digits that
// do not fit their type) passes through.

namespace warpline {

class LSSfile {
 public:
  // The messages must outlive this object. The staging copy starts as the reset model.
  explicit LSSfile(const Messages& messages);

  // Reads a file into the staging copy: what the file does not name stays as the last read left it,
  // but register texts are emptied first, and settings change only when the whole file was read. A
  // missing settings file is false without a message.
  bool OpenDataFile(const std::filesystem::path& path, std::string_view type);

  // Writes what the data holds of this type. The old file stays whole when anything fails, and no
  // other file is left behind.
  bool SaveDataFile(const std::filesystem::path& path, std::string_view type, FileData data) const;

  // What the last reads left.
  FileData& Staging() { return staging_; }

  // Puts the staging copy's correction back to the reset model.
  void ResetStaging();

 private:
  const Messages& messages_;
  FileData staging_;
};

}  // namespace warpline
