#include "sim/recording/replay.h"

#include <algorithm>
#include <array>
#include <map>
#include <memory>

#include "sim/recording/frame_names.h"

namespace warpline::sim {
namespace {

constexpr std::size_t kShownBytes = 64;
constexpr milliseconds kConnectLimitMs{5000};

class Player {
 public:
  Player(const Endpoint& place, const ReplayTimes& times, const ProjectorTexts& texts,
         std::ostream& out)
      : place_(place), times_(times), texts_(texts), out_(out) {}

  void Play(const RecordedEvent& event) {
    if (event.Kind == RecordedKind::kRefused) return;
    if (event.Kind == RecordedKind::kOpened) return Open(event);
    Channel* const channel = links_[event.Link].get();
    if (event.Kind == RecordedKind::kClosed) {
      links_.erase(event.Link);
    } else if (channel != nullptr) {
      Ask(event, *channel);
    }
  }

  bool Summarize() const {
    Tell(ProjectorText::kReplaySummary, {std::to_string(exchanges_), std::to_string(opened_),
                                         std::to_string(differences_), std::to_string(agreeing_)});
    if (differences_ > 0) Tell(ProjectorText::kReplayFirst, {std::to_string(first_)});
    return differences_ == 0 && exchanges_ > 0;
  }

 private:
  void Open(const RecordedEvent& event) {
    ConnectStatus status{};
    links_[event.Link] = ConnectTcp(place_, kConnectLimitMs, status);
    if (links_[event.Link]) {
      ++opened_;
    } else {
      Differ(ProjectorText::kReplayNoLink, event, {TextOf(place_)});
    }
  }

  void Ask(const RecordedEvent& event, Channel& channel) {
    ++exchanges_;
    if (channel.Write(event.Request, times_.Answer) != ChannelStatus::kOk) {
      return Differ(ProjectorText::kReplayNotSent, event, {});
    }
    const Bytes reply = Collect(event, channel);
    if (reply == event.Reply) {
      ++agreeing_;
      return;
    }
    Differ(ProjectorText::kReplayDiffers, event,
           {FrameName(texts_, event.Request), BytesText(event.Reply), BytesText(reply)});
  }

  // What comes until there are as many bytes as were recorded and as the answer itself announces,
  // and what has come behind them by then.
  Bytes Collect(const RecordedEvent& event, Channel& channel) const {
    const milliseconds limit = event.Reply.empty() ? times_.Silence : times_.Answer;
    const Clock::time_point deadline = Clock::now() + limit + event.ReplyAfter;
    std::array<std::uint8_t, 4096> buffer{};
    Bytes reply;
    for (ReadResult read; read.Status == ChannelStatus::kOk;) {
      const bool whole = !reply.empty() && reply.size() >= event.Reply.size() &&
                         reply.size() >= AnnouncedLength(reply).value_or(reply.size() + 1);
      read = channel.Read(buffer, whole ? milliseconds(0) : Until(deadline));
      reply.insert(reply.end(), buffer.begin(),
                   buffer.begin() + static_cast<std::ptrdiff_t>(read.Count));
    }
    return reply;
  }

  // The text's first place is the number of the line.
  void Differ(ProjectorText key, const RecordedEvent& event, std::vector<std::string> values) {
    if (differences_++ == 0) first_ = event.Line;
    values.insert(values.begin(), std::to_string(event.Line));
    Tell(key, values);
  }

  void Tell(ProjectorText key, const std::vector<std::string>& values) const {
    out_ << FilledText(texts_[key], values) << "\n";
  }

  std::string BytesText(const Bytes& bytes) const {
    return bytes.empty() ? texts_[ProjectorText::kReplayNoAnswer] : FrameHex(bytes, kShownBytes);
  }

  Endpoint place_;
  ReplayTimes times_;
  const ProjectorTexts& texts_;
  std::ostream& out_;
  std::map<std::uint64_t, std::unique_ptr<Channel>> links_;
  std::size_t exchanges_ = 0;
  std::size_t opened_ = 0;
  std::size_t differences_ = 0;
  std::size_t agreeing_ = 0;
  std::size_t first_ = 0;  // the line of the first difference
};

}  // namespace

Playback::Playback(std::vector<RecordedEvent> events) : events_(std::move(events)) {
  for (const RecordedEvent& event : events_) {
    const bool opened = event.Kind == RecordedKind::kOpened;
    if (opened || event.Kind == RecordedKind::kRefused) openings_.push_back(opened);
  }
}

bool Playback::TakeOpening() {
  return openings_.empty() || openings_[next_opening_++ % openings_.size()];
}

bool Playback::NeverOpens() const {
  return !openings_.empty() && std::ranges::none_of(openings_, [](bool opened) { return opened; });
}

std::size_t Playback::ExpectedLine() const {
  for (std::size_t step = 0; step < events_.size(); ++step) {
    const RecordedEvent& event = events_[(next_ + step) % events_.size()];
    if (event.Kind == RecordedKind::kExchange) return event.Line;
  }
  return 0;
}

const RecordedEvent* Playback::Find(ByteView request) {
  for (std::size_t step = 0; step < events_.size(); ++step) {
    const std::size_t index = (next_ + step) % events_.size();
    const RecordedEvent& event = events_[index];
    if (event.Kind != RecordedKind::kExchange || !std::ranges::equal(event.Request, request)) {
      continue;
    }
    next_ = index + 1;
    return &event;
  }
  return nullptr;
}

bool ReplayTo(const std::vector<RecordedEvent>& events, const Endpoint& place,
              const ReplayTimes& times, const ProjectorTexts& texts, std::ostream& out) {
  Player player(place, times, texts, out);
  for (const RecordedEvent& event : events) player.Play(event);
  return player.Summarize();
}

}  // namespace warpline::sim
