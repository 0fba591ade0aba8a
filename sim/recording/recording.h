#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "sim/line/wire.h"
#include "sim/texts/projector_texts.h"

// A record of what passed between the tool and the projector: a text file of one line an event,
// each of which ends with LF. Behind the first line, kRecordingTitle, a line has these fields with
// tabs between:
//   link   its number, from 1
//   time   milliseconds since that link was opened; never less than in the link's line before
//   event  opened, request, reply, closed
//   name   of a request or reply: what the request asks for, for people to read
//   bytes  of a request or reply, at least one, as pairs of hex digits
// Empty lines and those that begin with "#" say nothing. An event belongs to a link that is open;
// a link has no two opened lines; a reply follows its request with no other event of the link
// between. A request without a reply was not answered. CR LF is accepted.

namespace warpline::sim {

inline constexpr std::string_view kRecordingTitle = "warpline-projector recording 1";

enum class RecordedKind { kOpened, kExchange, kClosed };

struct RecordedEvent {
  RecordedKind Kind = RecordedKind::kOpened;
  std::uint64_t Link = 0;
  milliseconds At{0};    // since the link was opened
  std::size_t Line = 0;  // in the file, from 1
  Bytes Request = {};
  Bytes Reply = {};            // empty: there was none
  milliseconds ReplyAfter{0};  // the request
};

// The events in the file's order; else nothing, and the reason with the number of the line.
std::optional<std::vector<RecordedEvent>> ParseRecording(std::string_view text, NamedText& reason);

// A new file to record into, in an old one's place; null when it cannot be written. A symbolic link
// is not followed.
std::unique_ptr<std::ofstream> OpenRecord(const std::filesystem::path& path);

// Writes a recording while it happens. Every line is with the system when the call returns. May be
// called from several threads.
class Recorder {
 public:
  // The stream must outlive the recorder.
  explicit Recorder(std::ostream& out, std::function<Clock::time_point()> now = &Clock::now);

  void Opened(std::uint64_t link);
  void Closed(std::uint64_t link);
  void Request(std::uint64_t link, ByteView request);
  // Nothing is written for an empty reply.
  void Reply(std::uint64_t link, ByteView request, ByteView reply);

 private:
  void Write(std::uint64_t link, std::string_view event, std::string_view rest);
  std::string Named(ByteView request, ByteView bytes) const;

  std::mutex mutex_;
  std::ostream& out_;
  std::function<Clock::time_point()> now_;
  const ProjectorTexts& names_;
  std::map<std::uint64_t, Clock::time_point> opened_;
};

}  // namespace warpline::sim
