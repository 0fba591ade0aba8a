#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include "core/interfaces.h"

namespace warpline {

// Holds messages back until the work that causes them has ended, so that nothing waits for the user
// while the projector is connected.
class HeldMessages : public MessageDisplay {
 public:
  // The display must outlive this object.
  explicit HeldMessages(MessageDisplay& display) : display_(display) {}

  // While it holds, a message counts as given up.
  std::size_t Show(const UserMessage& message) override {
    if (!holding_) return display_.Show(message);
    held_.push_back(message);
    return message.choices.size() - 1;
  }

  void Hold() { holding_ = true; }

  // What was held, in order.
  std::vector<UserMessage> Release() {
    holding_ = false;
    return std::exchange(held_, {});
  }

 private:
  MessageDisplay& display_;
  std::vector<UserMessage> held_;
  bool holding_ = false;
};

}  // namespace warpline
