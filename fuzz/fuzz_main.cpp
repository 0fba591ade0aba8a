#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "fuzz/targets.h"

// The fuzzer's program. Its first word names the target, the others are libFuzzer's.

namespace {

const warpline::FuzzTarget* target = nullptr;

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* count, char*** words) {
  const auto targets = warpline::FuzzTargets();
  const std::string_view name = *count > 1 ? (*words)[1] : "";
  const auto found = std::ranges::find(targets, name, &warpline::FuzzTarget::name);
  if (found == targets.end()) {
    for (const auto& known : targets) std::printf("%s\n", std::string(known.name).c_str());
    std::exit(name.empty() ? 0 : 2);
  }
  target = &*found;
  std::rotate(*words + 1, *words + 2, *words + *count);
  --*count;
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string fault = target->feed({reinterpret_cast<const char*>(data), size});
  if (fault.empty()) return 0;
  std::fprintf(stderr, "%s\n", fault.c_str());
  std::abort();
}
