#pragma once

#include <span>
#include <string>
#include <string_view>

// What reads bytes that anybody may have written. Each is fed with any bytes, by the fuzzer and by
// the test that plays the kept ones again.

namespace warpline {

struct FuzzTarget {
  std::string_view name;
  // What was wrong, empty when nothing was: what is refused has a reason that can be said, and what
  // is accepted is accepted as the same once it was written.
  std::string (*feed)(std::string_view bytes);
};

std::span<const FuzzTarget> FuzzTargets();

}  // namespace warpline
