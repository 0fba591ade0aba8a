#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include "core/messages.h"
#include "files/format_module.h"
#include "files/formats.h"
#include "platform/files.h"

// The file layer: one read loop and one save sequence for all four kinds of text file. Every
// failure is shown to the user here and returned as false. A fault of the arithmetic (digits that
// do not fit their type) passes through.

namespace warpline {

using FileReader =
    std::function<std::error_code(const std::filesystem::path& path, std::string& bytes)>;
using FreeSpaceQuestion =
    std::function<std::uintmax_t(const std::filesystem::path& path, std::error_code& error)>;

class LSSfile {
 public:
  // The messages must outlive this object. The staging copy starts as the reset model. Free space
  // is asked for as FreeSpace tells it.
  explicit LSSfile(const Messages& messages, FreeSpaceQuestion free_space = FreeSpace);

  // Files are read by this from now on, and not by ReadWholeFile; it also tells which are missing.
  void SetReader(FileReader reader) { reader_ = std::move(reader); }

  // Reads a file into the staging copy: what the file does not name stays as the last read left it,
  // but register texts are emptied first, and settings change only when the whole file was read. A
  // missing settings file is false without a message.
  bool OpenDataFile(const std::filesystem::path& path, std::string_view type);

  // Writes what the data holds of this type. The old file stays whole when anything fails, and no
  // other file is left behind. A device or a pipe is written into. When its folder is at fault the
  // message begins with the folder's name.
  bool SaveDataFile(const std::filesystem::path& path, std::string_view type, FileData data) const;

  // What SaveDataFile would write. Nothing for a type or data that cannot be written, with the same
  // messages.
  std::optional<std::string> TextOf(std::string_view type, FileData data) const;

  // Puts other bytes into a file, with the same care and the same messages.
  bool SaveBytes(const std::filesystem::path& path, std::string_view bytes) const;

  // Whether the attributes of what is there, if anything, allow a file to be put there: links are
  // refused, read-only and hidden files too. Shows the message when they do not.
  bool MayWrite(const std::filesystem::path& path) const;

  // The line that the last read did not accept; none when it was not for a line.
  const FilePlace& Place() const { return place_; }

  // What the last reads left.
  FileData& Staging() { return staging_; }

  // Puts the staging copy's correction back to the reset model.
  void ResetStaging();

 private:
  bool Replace(const std::filesystem::path& path, std::string_view bytes) const;
  bool HasSpace(const std::filesystem::path& path, std::string_view type) const;

  const Messages& messages_;
  FreeSpaceQuestion free_space_;
  FileReader reader_;
  FilePlace place_;
  FileData staging_;
};

}  // namespace warpline
