#pragma once

#include <cstddef>
#include <ostream>
#include <vector>

#include "sim/line/socket.h"
#include "sim/recording/recording.h"

// A recording played again: to the tool, whose requests it answers, or to a projector, which it
// asks.

namespace warpline::sim {

// Finds what was answered.
class Playback {
 public:
  explicit Playback(std::vector<RecordedEvent> events);

  // A caller is there: whether the recording's next link could be opened. Behind the end it goes on
  // at the start.
  bool TakeOpening();

  // The recording holds attempts to open a link and none that went well.
  bool NeverOpens() const;

  // The next exchange of the recording with the same request, behind the one that was found last;
  // behind the end it goes on at the start. Null when the recording holds no such request.
  const RecordedEvent* Find(ByteView request);

  // The line of the exchange that is to be expected next; 0 when the recording holds none.
  std::size_t ExpectedLine() const;

 private:
  std::vector<RecordedEvent> events_;
  std::size_t next_ = 0;
  std::vector<bool> openings_;
  std::size_t next_opening_ = 0;
};

// How long each answer of a projector may take, and how long one that must not come is waited for.
struct ReplayTimes {
  milliseconds Answer{5000};
  milliseconds Silence{300};
};

// Asks the projector at that place what the recording asks, over links that are opened and closed
// as they were, without the recorded pauses. Writes a line for each answer that differs and for
// each link that cannot be opened, and a summary at the end, which names the first of these lines.
// True when all agree and there was one.
bool ReplayTo(const std::vector<RecordedEvent>& events, const Endpoint& place,
              const ReplayTimes& times, const ProjectorTexts& texts, std::ostream& out);

}  // namespace warpline::sim
