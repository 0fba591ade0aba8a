#include "link/exchange_recorder.h"

#include <array>
#include <cstdio>

#include "core/conversions.h"
#include "core/recording_format.h"
#include "core/version.h"
#include "link/frame_name.h"

namespace warpline {
namespace {

using std::chrono::milliseconds;

std::string DurationText(const LibraryCall& call) {
  const std::chrono::duration<double, std::milli> time = call.ended - call.begun;
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%.3f", time.count());
  return text.data();
}

// The time of day, UTC: "2026-11-21T21:05:59Z".
std::string TimeOfDay() {
  const auto now = std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
  const auto day = std::chrono::floor<std::chrono::days>(now);
  const std::chrono::year_month_day date(day);
  const std::chrono::hh_mm_ss time(now - day);
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), "%04d-%02u-%02uT%02d:%02d:%02dZ",
                static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
                static_cast<unsigned>(date.day()), static_cast<int>(time.hours().count()),
                static_cast<int>(time.minutes().count()), static_cast<int>(time.seconds().count()));
  return text.data();
}

std::string WithoutAddress(const LibraryCall& call) {
  constexpr std::string_view kKey = "first=";
  const std::size_t start = call.details.find(kKey);
  if (call.address.empty() || start == std::string::npos) return call.details;
  const std::size_t value = start + kKey.size();
  std::string details = call.details.substr(0, value);
  return details.append("-").append(call.details, value + call.address.size());
}

}  // namespace

std::string RecordTitleLine() {
  std::string line(kToolRecordingTitle);
  line.append("\tWarpline Tool ").append(kToolVersion).append("\n");
  return line;
}

void ExchangeRecorder::Sends(std::span<const std::uint8_t> frame) {
  sent_name_ = FrameName(frame);
  WriteLine(LibraryCall::Clock::now(), kRequestEvent, {sent_name_, HexOf(frame)});
}

void ExchangeRecorder::Returned(const LibraryCall& call) {
  if (call.name == "PJCommDevOpen") return ReturnedOpen(call);
  if (!call.received.empty()) {
    WriteLine(call.ended, kReplyEvent, {sent_name_, HexOf(call.received)});
  }
  WriteCall(call, call.details);
  if (call.name != "PJCommDevClose") return;
  WriteLine(call.ended, kClosedEvent);
  EndLink();
}

void ExchangeRecorder::ReturnedOpen(const LibraryCall& call) {
  opened_ = call.ended;
  std::string details = redacted_ ? WithoutAddress(call) : call.details;
  WriteCall(call, details.append(" at=").append(TimeOfDay()));
  if (call.result < 0) return EndLink();
  WriteLine(call.ended, kOpenedEvent);
}

void ExchangeRecorder::EndLink() {
  ++link_;
  sink_.Complete();
}

void ExchangeRecorder::WriteCall(const LibraryCall& call, const std::string& details) {
  WriteLine(call.ended, kCallEvent,
            {call.name, std::to_string(call.result), DurationText(call), details});
}

void ExchangeRecorder::WriteLine(LibraryCall::Clock::time_point at, std::string_view event,
                                 std::initializer_list<std::string_view> more) {
  sink_.Write(
      RecordingLine(link_, std::chrono::duration_cast<milliseconds>(at - opened_), event, more));
}

}  // namespace warpline
