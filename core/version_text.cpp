#include "core/build_info.h"
#include "core/version.h"

namespace warpline {

std::string VersionText(std::string_view program, std::string_view toolkit) {
  std::string text(program);
  text.append(" ").append(kToolVersion);
  text.append("\ncommit: ").append(BuildCommit().empty() ? "unknown" : BuildCommit());
  text.append("\nwxWidgets: ").append(toolkit.empty() ? "none" : toolkit);
  return text.append("\n");
}

}  // namespace warpline
