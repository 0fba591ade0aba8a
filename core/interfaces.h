#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

// The two ways in which the code below the windows asks upwards. The windows and the command line
// implement them; tests record them. All texts are UTF-8.

namespace warpline {

enum class MessageIcon { kCritical, kWarning, kQuestion, kInformation };
enum class MessageAnswer { kYes, kNo, kCancel };

// A message box with one to three buttons. The last one is what Escape, and closing the box,
// answer.
struct UserMessage {
  std::string title;
  std::string text;
  MessageIcon icon = MessageIcon::kCritical;
  std::vector<std::string> choices;
  std::string_view kind = {};  // what failed, the same in every language; empty: not told
  int code = 0;                // of that kind

  bool operator==(const UserMessage&) const = default;
};

class MessageDisplay {
 public:
  virtual ~MessageDisplay() = default;

  // Returns when the box was closed: the number of the choice.
  virtual std::size_t Show(const UserMessage& message) = 0;
};

// Work that the user waits for, and work that follows the user's hand, which goes on meanwhile.
enum class BusyKind { kCommand, kFollowing };

// Brackets work that takes time.
class BusyIndicator {
 public:
  virtual ~BusyIndicator() = default;

  // Shows the hourglass and, for a command, takes input away from the window that asked. Calls may
  // be nested; the outermost one decides.
  virtual void BeginBusy(BusyKind kind) = 0;
  virtual void EndBusy() = 0;

  // Lets the window system handle what is pending (repaints); called between the steps of long
  // work.
  virtual void ProcessPendingEvents() = 0;

  // A step (1..steps) of the work begins; 0: what comes before them. EndSteps when the last one is
  // over, whatever became of it.
  virtual void ShowStep(int step, int steps) = 0;
  virtual void EndSteps() = 0;

  // The user wants the work to end before its next step.
  virtual bool Cancelled() const = 0;
};

// Keeps BeginBusy and EndBusy in pairs, whatever ends the work.
class BusyBracket {
 public:
  explicit BusyBracket(BusyIndicator& busy, BusyKind kind = BusyKind::kCommand) : busy_(busy) {
    busy_.BeginBusy(kind);
  }
  ~BusyBracket() { busy_.EndBusy(); }
  BusyBracket(const BusyBracket&) = delete;
  BusyBracket& operator=(const BusyBracket&) = delete;

 private:
  BusyIndicator& busy_;
};

}  // namespace warpline
