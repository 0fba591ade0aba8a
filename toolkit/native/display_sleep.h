#pragma once

#include <memory>

namespace warpline {

// While it lives, displays neither go to sleep nor show a screen saver, as far as the system can be
// asked for that.
class DisplaysAwake {
 public:
  // reason tells the user why, where the system shows it (UTF-8).
  explicit DisplaysAwake(const char* reason);
  ~DisplaysAwake();
  DisplaysAwake(const DisplaysAwake&) = delete;
  DisplaysAwake& operator=(const DisplaysAwake&) = delete;

 private:
  struct Request;
  std::shared_ptr<Request> request_;
};

}  // namespace warpline
