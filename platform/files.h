#pragma once

#include <cstdint>
#include <filesystem>
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

// The file's bytes, at most 64 MiB. On failure the error, and the text is unspecified.
std::error_code ReadWholeFile(const std::filesystem::path& path, std::string& bytes);

// Makes the file hold exactly these bytes: they are written beside it, flushed to disk and moved
// into its place, so that whatever goes wrong the file is either the old one or the new one and no
// other file stays behind.
std::error_code ReplaceFileContents(const std::filesystem::path& path, std::string_view bytes);

// Bytes that this user may still write in the folder that holds the path; 0 with the failure in
// error.
std::uintmax_t FreeSpace(const std::filesystem::path& path, std::error_code& error);

// The system's description of an error, UTF-8.
std::string SystemErrorText(std::error_code error);

// Paths and UTF-8 texts.
std::string Utf8Of(const std::filesystem::path& path);
std::filesystem::path PathOf(std::string_view utf8);

}  // namespace warpline
