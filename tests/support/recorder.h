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

// Keeps every message. Those with several buttons get the scripted answers in order, and the last
// button when there are none left.
class RecordingDisplay : public MessageDisplay {
 public:
  std::size_t Show(const UserMessage& message) override {
    messages.push_back({message.title, message.text, message.icon});
    choices = message.choices;
    if (choices.size() == 1 || answers.empty()) return choices.size() - 1;
    const auto answer = static_cast<std::size_t>(answers.front());
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
  std::vector<std::string> choices;  // of the last message
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
  void BeginBusy(BusyKind begun) override {
    kind = begun;
    ++depth;
    ++begins;
    if (on_begin) on_begin();
  }
  void EndBusy() override { --depth; }
  void ProcessPendingEvents() override {
    ++event_rounds;
    if (on_events) on_events();
  }
  void ShowStep(int step, int steps) override {
    shown_steps.push_back(std::to_string(step) + "/" + std::to_string(steps));
    if (on_step) on_step(step);
  }
  void EndSteps() override {}
  bool Cancelled() const override { return cancelled; }

  int depth = 0;
  int begins = 0;
  int event_rounds = 0;
  BusyKind kind = BusyKind::kCommand;    // of the last begin
  std::vector<std::string> shown_steps;  // "step/steps"
  bool cancelled = false;
  std::function<void()> on_begin;
  std::function<void(int step)> on_step;
  std::function<void()> on_events;
};

}  // namespace warpline
