#include "sim/recording/recording.h"

#include <algorithm>
#include <charconv>
#include <set>
#include <utility>

#include "core/conversions.h"
#include "sim/recording/frame_names.h"
#include "sim/recording/recorded_call.h"

namespace warpline::sim {
namespace {

constexpr std::size_t kLinkFields = 3;  // of opened and closed
constexpr std::size_t kFrameFields = 5;
constexpr std::size_t kCallFields = 7;
constexpr std::uint64_t kHighestNumber = 1'000'000'000;  // ten days, as milliseconds

// What is wrong with a line: the name of the text that says it.
struct RecordingError {
  std::string_view name;
};

// The text up to the separator, which is taken away with it.
std::vector<std::string_view> FieldsOf(std::string_view line) {
  std::vector<std::string_view> fields;
  const auto count = std::ranges::count(line, '\t') + 1;
  for (auto i = count; i > 0; --i) fields.push_back(TakeUpTo(line, '\t'));
  return fields;
}

std::uint64_t NumberOf(std::string_view text, std::uint64_t least, std::string_view needed) {
  const std::optional<std::uint64_t> value = WholeNumber(text, least, kHighestNumber);
  if (!value) throw RecordingError{needed};
  return *value;
}

Bytes BytesOf(std::string_view hex) {
  if (hex.empty() || hex.size() % 2 != 0 || !std::ranges::all_of(hex, IsHexDigit)) {
    throw RecordingError{"RecordedBytes"};
  }
  Bytes bytes(hex.size() / 2);
  HexTextToBytes(bytes, 0, hex);
  return bytes;
}

void Demand(bool so, std::string_view otherwise) {
  if (!so) throw RecordingError{otherwise};
}

bool IsTitle(std::string_view line) {
  return line == kRecordingTitle || line == kToolRecordingTitle ||
         line.starts_with(std::string(kToolRecordingTitle) + '\t');
}

std::int32_t ResultOf(std::string_view text) {
  std::int32_t value = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  Demand(error == std::errc() && stop == end, "RecordedResult");
  return value;
}

// Whole milliseconds; what is behind the point is for people.
milliseconds DurationOf(std::string_view text) {
  return milliseconds(NumberOf(text.substr(0, text.find('.')), 0, "RecordedTime"));
}

// Takes a recording line by line. What is wrong with a line is thrown as RecordingError.
class RecordingReader {
 public:
  void Take(std::string_view line, std::size_t number) {
    if (line.ends_with('\r')) line.remove_suffix(1);
    if (number == 1) return Demand(IsTitle(line), "RecordedTitle");
    if (line.empty() || line.starts_with('#')) return;
    const std::vector<std::string_view> fields = FieldsOf(line);
    const bool is_call = fields.size() == kCallFields && fields[2] == kCallEvent;
    Demand(is_call || fields.size() == kLinkFields || fields.size() == kFrameFields,
           "RecordedFields");
    RecordedEvent event{.Link = NumberOf(fields[0], 1, "RecordedLink"), .Line = number};
    event.At = milliseconds(NumberOf(fields[1], 0, "RecordedTime"));
    if (is_call) {
      TakeCall(std::move(event), fields);
    } else {
      TakeEvent(std::move(event), fields);
    }
  }

  std::vector<RecordedEvent> Events() && { return std::move(events_); }

 private:
  struct OpenLink {
    milliseconds at{0};
    std::optional<std::size_t> asked;  // the event of its last request
  };

  void TakeEvent(RecordedEvent event, const std::vector<std::string_view>& fields) {
    const std::string_view name = fields[2];
    const bool has_bytes = name == kRequestEvent || name == kReplyEvent;
    Demand(has_bytes || name == kOpenedEvent || name == kClosedEvent, "RecordedEventName");
    Demand(fields.size() == (has_bytes ? kFrameFields : kLinkFields), "RecordedRest");
    if (name == kOpenedEvent) Open(event);
    OpenLink& link = LinkAt(event);
    if (name == kReplyEvent) return TakeReply(link, event.At, BytesOf(fields[4]));
    if (name == kRequestEvent) event.Request = BytesOf(fields[4]);
    if (name == kRequestEvent) event.Kind = RecordedKind::kExchange;
    if (name == kClosedEvent) event.Kind = RecordedKind::kClosed;
    link.asked.reset();
    if (name == kRequestEvent) link.asked = events_.size();
    if (name == kClosedEvent) open_.erase(event.Link);
    events_.push_back(std::move(event));
  }

  void TakeCall(RecordedEvent event, const std::vector<std::string_view>& fields) {
    const RecordedCall call{fields[3], ResultOf(fields[4]), fields[6]};
    event.ReplyAfter = DurationOf(fields[5]);
    if (call.Name == "PJCommDevOpen") return TakeOpening(std::move(event), call);
    OpenLink& link = LinkAt(event);
    if (call.Name == "PJAnyCommand") return EndCommand(link, call.Result);
    std::optional<CallExchange> exchange = ExchangeOf(call);
    if (!exchange) return;
    event.Kind = RecordedKind::kExchange;
    event.At -= std::min(event.At, event.ReplyAfter);
    event.Request = std::move(exchange->Request);
    event.Reply = std::move(exchange->Reply);
    link.asked.reset();
    events_.push_back(std::move(event));
  }

  // The opened line follows when it went well.
  void TakeOpening(RecordedEvent event, const RecordedCall& call) {
    if (call.Result >= 0) return;
    event.Kind = RecordedKind::kRefused;
    events_.push_back(std::move(event));
  }

  void EndCommand(OpenLink& link, std::int32_t result) {
    Demand(link.asked.has_value(), "RecordedNoRequest");
    RecordedEvent& event = events_[*std::exchange(link.asked, std::nullopt)];
    event.Reply = ReplyFor(result, event.Request, std::move(event.Reply));
  }

  OpenLink& LinkAt(const RecordedEvent& event) {
    const auto link = open_.find(event.Link);
    Demand(link != open_.end(), "RecordedLinkClosed");
    Demand(event.At >= link->second.at, "RecordedTimeBack");
    link->second.at = event.At;
    return link->second;
  }

  void Open(const RecordedEvent& event) {
    Demand(known_.insert(event.Link).second, "RecordedLinkAgain");
    open_[event.Link] = {};
  }

  void TakeReply(OpenLink& link, milliseconds at, Bytes reply) {
    Demand(link.asked && events_[*link.asked].Reply.empty(), "RecordedNoRequest");
    RecordedEvent& event = events_[*link.asked];
    event.Reply = std::move(reply);
    event.ReplyAfter = at - event.At;
  }

  std::vector<RecordedEvent> events_;
  std::map<std::uint64_t, OpenLink> open_;
  std::set<std::uint64_t> known_;
};

}  // namespace

std::optional<std::vector<RecordedEvent>> ParseRecording(std::string_view text, NamedText& reason) {
  RecordingReader reader;
  std::size_t number = 0;
  try {
    do {
      ++number;
      reader.Take(TakeUpTo(text, '\n'), number);
    } while (!text.empty());
  } catch (const RecordingError& error) {
    reason = {"RecordedLine", {std::to_string(number)}, {{error.name}}};
    return std::nullopt;
  }
  return std::move(reader).Events();
}

Recorder::Recorder(std::ostream& out, std::function<Clock::time_point()> now)
    : out_(out), now_(std::move(now)), names_(ProjectorTextsOf(Language::kEnglish)) {
  out_ << kRecordingTitle << "\n" << std::flush;
}

void Recorder::Opened(std::uint64_t link) {
  const std::lock_guard lock(mutex_);
  opened_[link] = now_();
  Write(link, kOpenedEvent, {});
}

void Recorder::Closed(std::uint64_t link) {
  const std::lock_guard lock(mutex_);
  Write(link, kClosedEvent, {});
  opened_.erase(link);
}

void Recorder::Request(std::uint64_t link, ByteView request) {
  const std::lock_guard lock(mutex_);
  Write(link, kRequestEvent, {FrameName(names_, request), HexOf(request)});
}

void Recorder::Reply(std::uint64_t link, ByteView request, ByteView reply) {
  if (reply.empty()) return;
  const std::lock_guard lock(mutex_);
  Write(link, kReplyEvent, {FrameName(names_, request), HexOf(reply)});
}

void Recorder::Write(std::uint64_t link, std::string_view event,
                     std::initializer_list<std::string_view> rest) {
  const auto time = std::chrono::duration_cast<milliseconds>(now_() - opened_[link]);
  out_ << RecordingLine(link, time, event, rest) << std::flush;
}

}  // namespace warpline::sim
