#pragma once

// Cameras anywhere in front of walls of any kind, the same ones at each run with a seed.

namespace warpline {

// Prints each fit that is above its target, beside what a slower search reaches with the same
// registers, and each that is worse than no correction or not as it is told. Returns how many are
// the latter, or could be below the target, or are none.
int RunRandomCameras(int count, unsigned seed);

}  // namespace warpline
