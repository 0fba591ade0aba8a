#pragma once

#include <random>

namespace warpline {

// The same numbers everywhere, other than by the standard library's distributions.
class Dice {
 public:
  explicit Dice(unsigned seed) : random_(seed) {}

  double Between(double low, double high) {
    return low + (high - low) * static_cast<double>(random_()) / 4294967295.0;
  }
  int Below(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }

 private:
  std::mt19937 random_;
};

}  // namespace warpline
