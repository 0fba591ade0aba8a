#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <map>
#include <mutex>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "core/recording_format.h"
#include "sim/line/wire.h"
#include "sim/texts/projector_texts.h"

// A record of what passed between the tool and the projector, in the form of
// core/recording_format.h.

namespace warpline::sim {

enum class RecordedKind { kOpened, kRefused, kExchange, kClosed };  // kRefused: not opened

struct RecordedEvent {
  RecordedKind Kind = RecordedKind::kOpened;
  std::uint64_t Link = 0;
  milliseconds At{0};    // since the link was opened
  std::size_t Line = 0;  // in the file, from 1
  Bytes Request = {};
  Bytes Reply = {};            // empty: there was none
  milliseconds ReplyAfter{0};  // the request
};

// The events in the file's order; else nothing, and the reason with the number of the line. A call
// of the control library that carried no frame counts as the exchange that it is between the
// stand-in library and a simulated projector.
std::optional<std::vector<RecordedEvent>> ParseRecording(std::string_view text, NamedText& reason);

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
  void Write(std::uint64_t link, std::string_view event,
             std::initializer_list<std::string_view> rest);

  std::mutex mutex_;
  std::ostream& out_;
  std::function<Clock::time_point()> now_;
  const ProjectorTexts& names_;
  std::map<std::uint64_t, Clock::time_point> opened_;
};

}  // namespace warpline::sim
