#pragma once

#include <vector>

#include "cli/projector_list.h"
#include "cli/verbs.h"

namespace warpline {

// Runs the verb on all these projectors at once, each in a process of its own, because the maker's
// library need not bear two links in one. One line each as they end, which begins with the
// projector's name, or is the line of its report. Returns the exit code: that of wrong usage when
// one says so, 1 when one failed.
int RunOnMany(const Verb& verb, const VerbInput& input,
              const std::vector<ListedProjector>& projectors, Session& session);

}  // namespace warpline
