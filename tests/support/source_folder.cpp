#include "tests/support/source_folder.h"

namespace warpline {

const std::filesystem::path& SourceFolder() {
  static const std::filesystem::path folder = WARPLINE_SOURCE_DIR;
  return folder;
}

}  // namespace warpline
