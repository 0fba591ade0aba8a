#pragma once

#include <chrono>
#include <thread>

namespace warpline {

// Asks until something is so; false when it is not within some seconds.
template <typename Condition>
bool ComesTrue(Condition so) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
  while (!so()) {
    if (std::chrono::steady_clock::now() > end) return false;
    std::this_thread::yield();
  }
  return true;
}

}  // namespace warpline
