#include "app/start_words.h"

#include <system_error>

#include "files/formats.h"
#include "platform/files.h"

namespace warpline {
namespace {

// A path from the root on has a "/" behind the first one.
bool LooksLikeSwitch(const std::string& word) {
  return word.starts_with('-') || (word.starts_with('/') && word.find('/', 1) == std::string::npos);
}

bool IsFile(const std::string& word) {
  const std::filesystem::path path = PathOf(word);
  std::error_code ignored;
  if (std::filesystem::is_regular_file(path, ignored)) return true;
  return !LooksLikeSwitch(word) && (TypeOf(path) == kTypeWlt || TypeOf(path) == kTypeWlr);
}

}  // namespace

StartWords SortWords(const std::vector<std::string>& words) {
  StartWords sorted;
  for (const std::string& word : words) {
    std::error_code ignored;
    if (!IsFile(word)) {
      sorted.switches.append(word).append(" ");
    } else if (sorted.file.empty()) {
      sorted.file = std::filesystem::absolute(PathOf(word), ignored);
    }
  }
  return sorted;
}

}  // namespace warpline
