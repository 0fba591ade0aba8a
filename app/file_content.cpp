#include "app/file_content.h"

#include <functional>
#include <string>
#include <system_error>

#include "platform/files.h"

namespace warpline {

std::optional<FileContent> ContentOf(const std::filesystem::path& path) {
  std::error_code ignored;
  std::string bytes;
  if (!std::filesystem::is_regular_file(path, ignored)) return std::nullopt;
  if (ReadWholeFile(path, bytes)) return std::nullopt;
  return FileContent{bytes.size(), std::hash<std::string>()(bytes)};
}

}  // namespace warpline
