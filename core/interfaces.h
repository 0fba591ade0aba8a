#pragma once

#include <string>

// The two ways in which the code below the windows asks upwards. The windows and the command line
// implement them; tests record them. All texts are UTF-8.

namespace warpline {

enum class MessageIcon { kCritical, kWarning, kQuestion, kInformation };
enum class MessageAnswer { kYes, kNo, kCancel };

class MessageDisplay {
 public:
  virtual ~MessageDisplay() = default;

  // A message box with an OK button; returns when it was closed.
  virtual void Show(const std::string& title, const std::string& text, MessageIcon icon) = 0;

  // A question with Yes, No and Cancel.
  virtual MessageAnswer Ask(const std::string& title, const std::string& text) = 0;
};

// Brackets work during which the user must wait.
class BusyIndicator {
 public:
  virtual ~BusyIndicator() = default;

  // Shows the hourglass and takes input away from the window that asked. Calls may be nested.
  virtual void BeginBusy() = 0;
  virtual void EndBusy() = 0;

  // Lets the window system handle what is pending (repaints); called between the steps of long
  // work.
  virtual void ProcessPendingEvents() = 0;
};

// Keeps BeginBusy and EndBusy in pairs, whatever ends the work.
class BusyBracket {
 public:
  explicit BusyBracket(BusyIndicator& busy) : busy_(busy) { busy_.BeginBusy(); }
  ~BusyBracket() { busy_.EndBusy(); }
  BusyBracket(const BusyBracket&) = delete;
  BusyBracket& operator=(const BusyBracket&) = delete;

 private:
  BusyIndicator& busy_;
};

}  // namespace warpline
