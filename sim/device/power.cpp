#include "sim/device/power.h"

#include <algorithm>

namespace warpline::sim {

void PowerSwitch::Turn(bool on, Clock::time_point now) {
  At(now);
  wanted_on_ = on;
  if (state_ == (on ? Power::kStandby : Power::kOn)) Begin(on);
}

void PowerSwitch::SetSpeedUp(int factor, Clock::time_point now) {
  At(now);
  speed_up_ = std::clamp(factor, 1, kHighestSpeedUp);
}

Power PowerSwitch::At(Clock::time_point now) {
  auto passed = std::chrono::duration<double, std::milli>(now - seen_) * speed_up_;
  seen_ = now;
  while (state_ == Power::kWarmingUp || state_ == Power::kCoolingDown) {
    if (passed < left_) {
      left_ -= passed;
      break;
    }
    passed -= left_;
    state_ = state_ == Power::kWarmingUp ? Power::kOn : Power::kStandby;
    if (wanted_on_ != (state_ == Power::kOn)) Begin(wanted_on_);
  }
  return state_;
}

milliseconds PowerSwitch::Left(Clock::time_point now) {
  const Power state = At(now);
  if (state == Power::kOn || state == Power::kStandby) return milliseconds(0);
  return std::chrono::ceil<milliseconds>(left_ / speed_up_);
}

void PowerSwitch::Begin(bool on) {
  state_ = on ? Power::kWarmingUp : Power::kCoolingDown;
  left_ = on ? kWarmUpMs : kCoolDownMs;
}

}  // namespace warpline::sim
