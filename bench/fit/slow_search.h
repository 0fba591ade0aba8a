#pragma once

#include "fit/fit_input.h"
#include "fit/search.h"

namespace warpline {

// The best correction that differential evolution finds for what a fit was given: over the
// parameters and curve points as the tool encodes them, judged by the edges that their registers
// make, from random starts and from a given answer. Takes half a minute; the same each time.
Candidate SlowBest(const FitInput& input, const CorrectionData& answer);

}  // namespace warpline
