#include <gtest/gtest.h>

#include <random>

#include "tests/support/feed_projector.h"
#include "tests/support/sim_hex.h"

namespace warpline::sim {
namespace {

// Streams of right frames with a few changes, always the same ones.
TEST(FrameDecoder, StandsWhatAFixedSeedBringsUp) {
  const char* const frames[] = {kProbe, kClear,   kWriteScroll, kShow,    kStore,
                                kMode1, kPrepare, kClass,       kRunning, kInput7};
  std::mt19937 random(20);
  for (int round = 0; round < 20000; ++round) {
    Bytes stream{static_cast<std::uint8_t>(random() % 256)};
    for (auto count = random() % 4 + 1; count > 0; --count) {
      const Bytes frame = FromHex(frames[random() % std::size(frames)]);
      stream.insert(stream.end(), frame.begin(), frame.end());
    }
    for (auto changes = random() % 5; changes > 0; --changes) {
      stream[random() % stream.size()] = static_cast<std::uint8_t>(random() % 256);
    }
    if (random() % 8 == 0) stream.resize(random() % stream.size() + 1);
    ASSERT_EQ(FeedProjector(stream), "") << ToHex(stream);
  }
}

}  // namespace
}  // namespace warpline::sim
