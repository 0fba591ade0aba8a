#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// What a process that tries the libraries and the connection tells the one that started it: a line
// an event, tabs between the fields.
//   begin   step
//   end     step, state, milliseconds, category and code of a failure, what was told
//   record  a line for the recording of the exchange

namespace warpline {

enum class CheckState { kGood, kNote, kFailed };

inline constexpr int kNoCategory = -1;  // of a failure that is none of the link

struct TrialStep {
  std::string step{};
  CheckState state = CheckState::kGood;
  std::int64_t milliseconds = 0;
  int category = kNoCategory;  // MessageCategory
  int code = 0;
  std::string told{};  // what it told, or why it failed; one line

  bool operator==(const TrialStep&) const = default;
};

enum class TrialEvent { kBegin, kEnd, kRecord };

struct TrialLine {
  TrialEvent event = TrialEvent::kBegin;
  TrialStep step{};      // of a begin the name alone
  std::string record{};  // the line, its LF included
};

// Each ends with LF.
std::string BeginLine(std::string_view step);
std::string EndLine(const TrialStep& step);
std::string RecordLine(std::string_view line);

// Nothing for a line that is none of these. The LF is not part of it.
std::optional<TrialLine> TrialLineOf(std::string_view line);

}  // namespace warpline
