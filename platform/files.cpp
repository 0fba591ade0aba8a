#include "platform/files.h"

#include <cerrno>
#include <fstream>

namespace warpline {
namespace {

// Far beyond every file of ours; what is larger was not meant to be read.
constexpr std::streamoff kMostFileBytes = std::streamoff{64} << 20;

}  // namespace

std::error_code ReadWholeFile(const std::filesystem::path& path, std::string& bytes) {
  std::error_code error;
  if (std::filesystem::is_directory(path, error)) {
    return std::make_error_code(std::errc::is_a_directory);
  }
  errno = 0;
  std::ifstream file(path, std::ios::binary);
  if (file) {
    file.seekg(0, std::ios::end);
    const std::streamoff size = file.tellg();
    if (size > kMostFileBytes) return std::make_error_code(std::errc::file_too_large);
    bytes.assign(size > 0 ? static_cast<std::size_t>(size) : 0, '\0');
    file.seekg(0);
    file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    bytes.resize(static_cast<std::size_t>(file.gcount()));
  }
  if (file.is_open() && !file.bad()) return {};
  return {errno != 0 ? errno : EIO, std::generic_category()};
}

std::string Utf8Of(const std::filesystem::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

std::filesystem::path PathOf(std::string_view utf8) {
  return std::filesystem::path(std::u8string(utf8.begin(), utf8.end()));
}

}  // namespace warpline
