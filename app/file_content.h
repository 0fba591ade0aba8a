#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>

// What is remembered of a file's content to see whether somebody else has changed it.

namespace warpline {

struct FileContent {
  std::size_t size = 0;  // bytes
  std::size_t hash = 0;

  bool operator==(const FileContent&) const = default;
};

// Nothing when there is no such file, it cannot be read, or it is none that keeps what is written
// into it.
std::optional<FileContent> ContentOf(const std::filesystem::path& path);

}  // namespace warpline
