#pragma once

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "core/LSSglobal.h"
#include "core/interfaces.h"
#include "core/messages.h"

// Stand-ins for the two upward interfaces that keep what they were asked, for tests to look at.

namespace warpline {

struct RecordedMessage {
  std::string title;
  std::string text;
  MessageIcon icon = MessageIcon::kCritical;

  bool operator==(const RecordedMessage&) const = default;
};

// Keeps every message and question (a question has the question icon). Questions get the scripted
// answers in order, and Cancel when there are none left.
class RecordingDisplay : public MessageDisplay {
 public:
  void Show(const std::string& title, const std::string& text, MessageIcon icon) override {
    messages.push_back({title, text, icon});
  }

  MessageAnswer Ask(const std::string& title, const std::string& text) override {
    messages.push_back({title, text, MessageIcon::kQuestion});
    if (answers.empty()) return MessageAnswer::kCancel;
    const MessageAnswer answer = answers.front();
    answers.pop_front();
    return answer;
  }

  // The texts alone, in order.
  std::vector<std::string> Texts() const {
    std::vector<std::string> texts;
    for (const RecordedMessage& message : messages) texts.push_back(message.text);
    return texts;
  }

  std::vector<RecordedMessage> messages;
  std::deque<MessageAnswer> answers;
};

// The shared state with its messages recorded, in English.
struct Recorded {
  LSSglobal global;
  RecordingDisplay display;
  Messages messages{global, display};
};

// Counts the brackets of busy work: depth is 0 again when every begin found its end.
class RecordingBusy : public BusyIndicator {
 public:
  void BeginBusy() override {
    ++depth;
    ++begins;
    if (on_begin) on_begin();
  }
  void EndBusy() override { --depth; }
  void ProcessPendingEvents() override { ++event_rounds; }

  int depth = 0;
  int begins = 0;
  int event_rounds = 0;
  std::function<void()> on_begin;
};

}  // namespace warpline
