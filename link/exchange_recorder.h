#pragma once

#include <chrono>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>

#include "link/beamlink_calls.h"

// Writes down what passes between the tool and the projector, as core/recording_format.h says.

namespace warpline {

// Takes the lines of a recording.
class RecordSink {
 public:
  virtual ~RecordSink() = default;

  // Whole lines. Nothing waits for where they go.
  virtual void Write(std::string lines) = 0;

  // The link is closed: returns when everything written so far is where it belongs, or lost.
  virtual void Complete() = 0;
};

// The first line.
std::string RecordTitleLine();

class ExchangeRecorder : public CallObserver {
 public:
  // The sink must outlive this object. redacted: without addresses. first_link: the number of the
  // next link.
  ExchangeRecorder(RecordSink& sink, bool redacted, std::uint64_t first_link = 1)
      : sink_(sink), redacted_(redacted), link_(first_link) {}

  void Sends(std::span<const std::uint8_t> frame) override;
  void Returned(const LibraryCall& call) override;

  // The number of the next link, which somebody else records. No link is open.
  std::uint64_t TakeLink() { return link_++; }

 private:
  void ReturnedOpen(const LibraryCall& call);
  void WriteCall(const LibraryCall& call, const std::string& details);
  void WriteLine(LibraryCall::Clock::time_point at, std::string_view event,
                 std::initializer_list<std::string_view> more = {});
  void EndLink();

  RecordSink& sink_;
  bool redacted_;
  std::uint64_t link_;
  LibraryCall::Clock::time_point opened_{};
  std::string sent_name_;
};

}  // namespace warpline
