#include "tests/support/environment.h"

#include <stdlib.h>

namespace warpline {

void PutEnvironment(const char* name, const std::optional<std::string>& value) {
  if (value) {
    ::setenv(name, value->c_str(), 1);
  } else {
    ::unsetenv(name);
  }
}

OwnSettings::OwnSettings(const std::filesystem::path& folder) {
  place_.emplace("XDG_CONFIG_HOME", folder.string());
}

OwnSettings::~OwnSettings() = default;

}  // namespace warpline
