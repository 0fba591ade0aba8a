#include "sim/recording/recording.h"

#include <algorithm>
#include <set>
#include <utility>

#include "core/conversions.h"
#include "platform/files.h"
#include "sim/recording/frame_names.h"

namespace warpline::sim {
namespace {

constexpr std::size_t kLinkFields = 3;  // of opened and closed
constexpr std::size_t kFrameFields = 5;
constexpr std::uint64_t kHighestNumber = 1'000'000'000;  // ten days, as milliseconds

// What is wrong with a line: the name of the text that says it.
struct RecordingError {
  std::string_view name;
};

// The text up to the separator, which is taken away with it.
std::string_view TakeUpTo(std::string_view& text, char separator) {
  const std::size_t end = std::min(text.find(separator), text.size());
  const std::string_view part = text.substr(0, end);
  text.remove_prefix(std::min(end + 1, text.size()));
  return part;
}

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

// Takes a recording line by line. What is wrong with a line is thrown as RecordingError.
class RecordingReader {
 public:
  void Take(std::string_view line, std::size_t number) {
    if (line.ends_with('\r')) line.remove_suffix(1);
    if (number == 1) return Demand(line == kRecordingTitle, "RecordedTitle");
    if (line.empty() || line.starts_with('#')) return;
    const std::vector<std::string_view> fields = FieldsOf(line);
    Demand(fields.size() == kLinkFields || fields.size() == kFrameFields, "RecordedFields");
    RecordedEvent event{.Link = NumberOf(fields[0], 1, "RecordedLink"), .Line = number};
    event.At = milliseconds(NumberOf(fields[1], 0, "RecordedTime"));
    TakeEvent(std::move(event), fields);
  }

  std::vector<RecordedEvent> Events() && { return std::move(events_); }

 private:
  struct OpenLink {
    milliseconds at{0};
    std::optional<std::size_t> unanswered;  // the event of its last request
  };

  void TakeEvent(RecordedEvent event, const std::vector<std::string_view>& fields) {
    const std::string_view name = fields[2];
    const bool has_bytes = name == "request" || name == "reply";
    Demand(has_bytes || name == "opened" || name == "closed", "RecordedEventName");
    Demand(fields.size() == (has_bytes ? kFrameFields : kLinkFields), "RecordedRest");
    if (name == "opened") Open(event);
    const auto link = open_.find(event.Link);
    Demand(link != open_.end(), "RecordedLinkClosed");
    Demand(event.At >= link->second.at, "RecordedTimeBack");
    link->second.at = event.At;
    if (name == "reply") return TakeReply(link->second, event.At, BytesOf(fields[4]));
    if (name == "request") event.Request = BytesOf(fields[4]);
    if (name == "request") event.Kind = RecordedKind::kExchange;
    if (name == "closed") event.Kind = RecordedKind::kClosed;
    link->second.unanswered.reset();
    if (name == "request") link->second.unanswered = events_.size();
    if (name == "closed") open_.erase(link);
    events_.push_back(std::move(event));
  }

  void Open(const RecordedEvent& event) {
    Demand(known_.insert(event.Link).second, "RecordedLinkAgain");
    open_[event.Link] = {};
  }

  void TakeReply(OpenLink& link, milliseconds at, Bytes reply) {
    Demand(link.unanswered.has_value(), "RecordedNoRequest");
    RecordedEvent& event = events_[*std::exchange(link.unanswered, std::nullopt)];
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

std::unique_ptr<std::ofstream> OpenRecord(const std::filesystem::path& path) {
  // A link that somebody laid here would lead to a file that is none of ours.
  if ((FileAttributes(path) & kAlias) != 0) return nullptr;
  auto file = std::make_unique<std::ofstream>(path, std::ios::binary | std::ios::trunc);
  return *file ? std::move(file) : nullptr;
}

Recorder::Recorder(std::ostream& out, std::function<Clock::time_point()> now)
    : out_(out), now_(std::move(now)), names_(ProjectorTextsOf(Language::kEnglish)) {
  out_ << kRecordingTitle << "\n" << std::flush;
}

void Recorder::Opened(std::uint64_t link) {
  const std::lock_guard lock(mutex_);
  opened_[link] = now_();
  Write(link, "opened", "");
}

void Recorder::Closed(std::uint64_t link) {
  const std::lock_guard lock(mutex_);
  Write(link, "closed", "");
  opened_.erase(link);
}

void Recorder::Request(std::uint64_t link, ByteView request) {
  const std::lock_guard lock(mutex_);
  Write(link, "request", Named(request, request));
}

void Recorder::Reply(std::uint64_t link, ByteView request, ByteView reply) {
  if (reply.empty()) return;
  const std::lock_guard lock(mutex_);
  Write(link, "reply", Named(request, reply));
}

void Recorder::Write(std::uint64_t link, std::string_view event, std::string_view rest) {
  const auto time = std::chrono::duration_cast<milliseconds>(now_() - opened_[link]);
  out_ << link << '\t' << time.count() << '\t' << event << rest << '\n' << std::flush;
}

std::string Recorder::Named(ByteView request, ByteView bytes) const {
  return '\t' + FrameName(names_, request) + '\t' + HexOf(bytes);
}

}  // namespace warpline::sim
