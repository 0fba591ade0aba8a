#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "cli/session.h"
#include "cli/verb_input.h"

// The projectors that one run works on: several --lan, or a file of --projectors.

namespace warpline {

struct ListedProjector {
  std::string name;
  std::string address;                        // with its port
  std::optional<std::filesystem::path> file;  // of its own, instead of the verb's
};

// The projectors of the words; empty when these hold no list. Nothing when
// they are wrong or the file cannot be used, which has been said; then exit_code tells which.
std::optional<std::vector<ListedProjector>> ProjectorsOf(const VerbInput& input, Session& session,
                                                         int& exit_code);

}  // namespace warpline
