#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/check_rows.h"
#include "app/exchange_recording.h"
#include "app/trial_lines.h"
#include "core/LSSglobal.h"
#include "core/catalogue.h"

// The check of the connection, one row after the other: program, libraries, settings, projector. It
// asks only and changes nothing on the projector. Libraries and link are tried in a process of
// their own, so that one that crashes is a row.

namespace warpline {

// How a process that tries something ended.
enum class TrialEnd { kDone, kCrashed, kHung, kStopped, kNotStarted };
struct TrialOutcome {
  TrialEnd end = TrialEnd::kDone;
  std::uint32_t code = 0;  // of a crash; of a trial that is done 0
};

// Runs a trial, gives each of its lines to the second argument, and returns when it has ended.
using TrialRunner = std::function<TrialOutcome(
    const std::vector<std::string>& words, const std::function<void(std::string_view line)>& take)>;

// Seconds without a line after which a trial counts as hung; far beyond the longest time-out.
inline constexpr int kTrialSilenceSeconds = 30;

// In a process of this program. goes_on is asked again and again; when it says no, the process is
// ended.
TrialRunner TrialInOwnProcess(std::function<bool()> goes_on);

class ConnectionCheck {
 public:
  struct Parts {
    const LSSglobal& global;
    std::filesystem::path application_data;
    TrialRunner run;
    ExchangeRecording& recording;  // which the exchange goes into when it is on
    std::function<void(const CheckRow&)> take;
  };

  explicit ConnectionCheck(Parts parts) : parts_(std::move(parts)) {}

  // To be called once. The rows are given to take as they come. The verdict is the first failure,
  // that of the search library only when there is no other.
  CheckVerdict Run();

 private:
  // False: what follows is pointless.
  bool CheckLibraries();
  bool CheckSettings();
  void CheckProjector();

  TrialOutcome RunTrialOf(CheckGroup group, const std::vector<std::string>& words,
                          const std::string& first_step);
  void TakeStep(CheckGroup group, const TrialStep& step);
  void TellEnd(CheckGroup group, const TrialOutcome& outcome);
  void Tell(CheckRow row);
  void TellPlace(std::string_view step, CheckState state, ToolText text, const std::string& place,
                 std::optional<ToolText> advice);

  Parts parts_;
  CheckVerdict verdict_;
  bool verdict_is_minor_ = false;  // the projector can be reached all the same
  std::string step_;               // of the trial that runs, the last one begun
  bool step_runs_ = false;
  bool failed_ = false;  // of the trial that runs
};

}  // namespace warpline
