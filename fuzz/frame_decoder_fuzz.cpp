#include <cstdio>
#include <cstdlib>

#include "fuzz/feed_projector.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string fault = warpline::sim::FeedProjector({data, size});
  if (fault.empty()) return 0;
  std::fprintf(stderr, "%s\n", fault.c_str());
  std::abort();
}
