#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

// Files and their names.

namespace warpline {

// File attributes, as bits.
enum FileAttribute : std::uint32_t {
  kReadOnly = 1,
  kHidden = 2,
  kSystemFile = 4,
  kVolumeLabel = 8,
  kDirectory = 16,
  kArchive = 32,
  kAlias = 64,
};

// The attributes of what the path itself names (a link is not followed), 0 when nothing is there.
std::uint32_t FileAttributes(const std::filesystem::path& path);

// Far beyond every file of ours; what is larger was not meant to be read.
inline constexpr std::size_t kMostFileBytes = std::size_t{64} << 20;

// The file's bytes, at most kMostFileBytes; of a pipe or a device what comes until its end. A pipe
// that nobody writes is an error, not a wait. On failure the error, and the text is unspecified.
std::error_code ReadWholeFile(const std::filesystem::path& path, std::string& bytes);

// Makes the file hold exactly these bytes: they are written beside it, flushed to disk and moved
// into its place, so that whatever goes wrong the file is either the old one or the new one and no
// other file stays behind. What a killed process left in that folder is cleared. A device or a pipe
// is written into instead; a pipe that nobody reads is an error, not a wait.
std::error_code ReplaceFileContents(const std::filesystem::path& path, std::string_view bytes);

// Bytes that this user may still write in the folder that holds the path; 0 with the failure in
// error.
std::uintmax_t FreeSpace(const std::filesystem::path& path, std::error_code& error);

// Whether this user can make a file in the folder.
bool CanMakeFilesIn(const std::filesystem::path& folder);

// The system's description of an error, UTF-8.
std::string SystemErrorText(std::error_code error);

// Paths and UTF-8 texts.
std::string Utf8Of(const std::filesystem::path& path);
std::filesystem::path PathOf(std::string_view utf8);

// The same of bytes that anybody may have written. Nothing when the system knows no such name.
std::optional<std::filesystem::path> PathOfForeign(std::string_view bytes);

}  // namespace warpline
