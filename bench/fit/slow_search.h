#pragma once

#include "fit/fit_input.h"
#include "fit/search.h"

namespace warpline {

// The best correction that differential evolution finds for what a fit was given: over the
// parameters and curve points as the tool encodes them, judged by their registers as the fit's own
// answers are, from random starts and from a given answer. Takes half a minute; the same each time.
Candidate SlowBest(const FitInput& input, const CorrectionData& answer);

}  // namespace warpline
