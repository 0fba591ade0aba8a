#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

namespace warpline {

// The states that something has been in, for undo and redo. About tells of the step that led to a
// state. Steps of one gesture count as one while the gesture lasts.
template <typename State, typename About>
class ValueHistory {
 public:
  using Time = std::chrono::steady_clock::time_point;

  // The oldest steps beyond these are forgotten.
  static constexpr std::size_t kMostSteps = 20'000;

  // A gesture that rests is over after this time.
  static constexpr std::chrono::seconds kLongestRest{2};

  explicit ValueHistory(State start) { Clear(std::move(start)); }

  // Forgets all steps.
  void Clear(State start) {
    entries_.clear();
    entries_.push_back({std::move(start), {}});
    at_ = 0;
    EndGesture();
  }

  // The state has changed. gesture: what the user does it with; 0 is always a step of its own. A
  // state equal to the present one is no step, and a gesture that ends where it began none either.
  void Note(const State& state, About about, int gesture, Time now) {
    if (state == entries_[at_].state) return;
    const bool goes_on = gesture != 0 && gesture == gesture_ && !RestedTooLong(now);
    entries_.resize(at_ + 1);
    if (!goes_on) {
      entries_.push_back({state, std::move(about)});
      ++at_;
      Trim();
    } else if (state == entries_[at_ - 1].state) {
      entries_.pop_back();
      --at_;
      gesture = 0;
    } else {
      entries_[at_] = {state, std::move(about)};
    }
    gesture_ = gesture;
    rested_.reset();
  }

  // The gesture may go on soon, or is over.
  void Rest(Time now) { rested_ = now; }
  void EndGesture() { gesture_ = 0; }

  bool CanUndo() const { return at_ > 0; }
  bool CanRedo() const { return at_ + 1 < entries_.size(); }

  // The step that Undo takes back, and that Redo brings; null when there is none.
  About* Undoable() { return CanUndo() ? &entries_[at_].about : nullptr; }
  About* Redoable() { return CanRedo() ? &entries_[at_ + 1].about : nullptr; }

  // The state then. To be asked for only when there is such a step.
  const State& Undo() {
    EndGesture();
    return entries_.at(--at_).state;
  }
  const State& Redo() {
    EndGesture();
    return entries_.at(++at_).state;
  }

 private:
  struct Entry {
    State state;
    About about;
  };

  bool RestedTooLong(Time now) const { return rested_ && now - *rested_ >= kLongestRest; }

  void Trim() {
    if (at_ <= kMostSteps) return;
    entries_.erase(entries_.begin());
    --at_;
  }

  std::vector<Entry> entries_;  // never empty
  std::size_t at_ = 0;
  int gesture_ = 0;
  std::optional<Time> rested_;
};

}  // namespace warpline
