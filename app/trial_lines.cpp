#include "app/trial_lines.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "core/conversions.h"

namespace warpline {
namespace {

constexpr std::string_view kBegin = "begin\t";
constexpr std::string_view kEnd = "end\t";
constexpr std::string_view kRecord = "record\t";

constexpr std::array<std::string_view, 3> kStates{"good", "note", "failed"};

template <typename Number>
bool TakeNumber(std::string_view& text, Number& number) {
  const std::string_view field = TakeUpTo(text, '\t');
  const char* const last = field.data() + field.size();
  const auto [stop, error] = std::from_chars(field.data(), last, number);
  return error == std::errc() && stop == last;
}

std::optional<TrialLine> EndOf(std::string_view rest) {
  TrialLine line;
  line.event = TrialEvent::kEnd;
  line.step.step = TakeUpTo(rest, '\t');
  const auto* const state = std::find(kStates.begin(), kStates.end(), TakeUpTo(rest, '\t'));
  if (state == kStates.end() || !TakeNumber(rest, line.step.milliseconds) ||
      !TakeNumber(rest, line.step.category) || !TakeNumber(rest, line.step.code)) {
    return std::nullopt;
  }
  line.step.state = static_cast<CheckState>(state - kStates.begin());
  line.step.told = rest;
  return line;
}

}  // namespace

std::string BeginLine(std::string_view step) {
  std::string line(kBegin);
  return line.append(step).append("\n");
}

std::string EndLine(const TrialStep& step) {
  std::string line(kEnd);
  line.append(step.step).append("\t").append(kStates[static_cast<std::size_t>(step.state)]);
  for (const std::int64_t number :
       {step.milliseconds, std::int64_t{step.category}, std::int64_t{step.code}}) {
    line.append("\t").append(std::to_string(number));
  }
  return line.append("\t").append(OneLine(step.told)).append("\n");
}

std::string RecordLine(std::string_view line) {
  std::string told(kRecord);
  return told.append(line);
}

std::optional<TrialLine> TrialLineOf(std::string_view line) {
  if (line.ends_with('\r')) line.remove_suffix(1);
  if (line.starts_with(kEnd)) return EndOf(line.substr(kEnd.size()));
  TrialLine taken;
  if (line.starts_with(kBegin)) {
    taken.step.step = line.substr(kBegin.size());
  } else if (line.starts_with(kRecord)) {
    taken.event = TrialEvent::kRecord;
    taken.record.append(line.substr(kRecord.size())).append("\n");
  } else {
    return std::nullopt;
  }
  return taken;
}

}  // namespace warpline
