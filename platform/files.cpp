#include "platform/files.h"

namespace warpline {

std::string Utf8Of(const std::filesystem::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

std::filesystem::path PathOf(std::string_view utf8) {
  return std::filesystem::path(std::u8string(utf8.begin(), utf8.end()));
}

std::optional<std::filesystem::path> PathOfForeign(std::string_view bytes) {
  try {
    return PathOf(bytes);
  } catch (const std::system_error&) {
    return std::nullopt;
  }
}

}  // namespace warpline
