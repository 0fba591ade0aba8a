#pragma once

#include "platform/channel.h"
#include "sim/device/projector.h"

// How a lamp projector comes on and goes off: it warms up and cools down for a while, and turns
// around in between only at the end of what it is doing.

namespace warpline::sim {

inline constexpr milliseconds kWarmUpMs{30'000};
inline constexpr milliseconds kCoolDownMs{60'000};
inline constexpr int kHighestSpeedUp = 1000;

class PowerSwitch {
 public:
  explicit PowerSwitch(Power start) : state_(start) {}

  // What is asked for in the middle of a change happens behind it.
  void Turn(bool on, Clock::time_point now);

  // The projector's time passes that many times as fast, 1..kHighestSpeedUp.
  void SetSpeedUp(int factor, Clock::time_point now);
  int SpeedUp() const { return speed_up_; }

  Power At(Clock::time_point now);

  // How long the change lasts that is under way; 0 when there is none.
  milliseconds Left(Clock::time_point now);

 private:
  void Begin(bool on);

  Power state_;
  bool wanted_on_ = state_ == Power::kOn || state_ == Power::kWarmingUp;
  std::chrono::duration<double, std::milli> left_{0};  // of the projector's own time
  Clock::time_point seen_{};
  int speed_up_ = 1;
};

}  // namespace warpline::sim
