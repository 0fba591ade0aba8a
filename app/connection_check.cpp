#include "app/connection_check.h"

#include <chrono>
#include <system_error>
#include <utility>

#include "app/check_texts.h"
#include "app/link_trial.h"
#include "app/startup.h"
#include "app/status_line.h"
#include "core/catalogue.h"
#include "core/tool_texts.h"
#include "core/version.h"
#include "link/library_loader.h"
#include "platform/child_process.h"
#include "platform/environment.h"
#include "platform/files.h"

namespace warpline {
namespace {

constexpr std::chrono::milliseconds kLookMs{50};

constexpr int kBitsOfByte = 8;

// Gives away the whole lines of what has come so far.
void TakeLines(std::string& bytes, const std::function<void(std::string_view)>& take) {
  for (std::size_t end = bytes.find('\n'); end != std::string::npos; end = bytes.find('\n')) {
    take(std::string_view(bytes).substr(0, end));
    bytes.erase(0, end + 1);
  }
}

}  // namespace

TrialRunner TrialInOwnProcess(std::function<bool()> goes_on) {
  return [goes_on = std::move(goes_on)](
             const std::vector<std::string>& words,
             const std::function<void(std::string_view)>& take) -> TrialOutcome {
    ChildProcess process;
    if (!process.Start(ProgramFile(), words)) return {TrialEnd::kNotStarted};
    std::string bytes;
    auto heard = std::chrono::steady_clock::now();
    for (auto read = ChildProcess::Read::kNothing; read != ChildProcess::Read::kEnd;) {
      read = process.ReadOutput(bytes, kLookMs);
      const auto now = std::chrono::steady_clock::now();
      if (read == ChildProcess::Read::kBytes) heard = now;
      TakeLines(bytes, take);
      if (!goes_on()) return {TrialEnd::kStopped};
      if (now - heard > std::chrono::seconds(kTrialSilenceSeconds)) return {TrialEnd::kHung};
    }
    const ProcessEnd end = process.Wait();
    return {end.crashed ? TrialEnd::kCrashed : TrialEnd::kDone, end.code};
  };
}

CheckVerdict ConnectionCheck::Run() {
  const LSSglobal& global = parts_.global;
  const int bits = static_cast<int>(sizeof(void*)) * kBitsOfByte;
  Tell({.step = "version",
        .text = FilledText(TextOf(global, ToolText::kCheckVersion),
                           {std::string(kToolVersion), std::to_string(bits)})});
  const bool libraries = CheckLibraries();
  const bool settings = CheckSettings();
  if (libraries && settings) CheckProjector();
  if (verdict_.good) verdict_.text = TextOf(global, ToolText::kCheckAllGood);
  return verdict_;
}

// The search library is not needed for a connection whose address is known.
bool ConnectionCheck::CheckLibraries() {
  bool usable = true;
  for (const LibraryNames& names : MakersLibraries()) {
    const TrialOutcome outcome =
        RunTrialOf(CheckGroup::kLibraries, LibraryTrialWords(names.library),
                   std::string(names.library) + '.' + kTrialFile);
    if (outcome.end == TrialEnd::kStopped) return false;
    const bool control = &names == &MakersLibraries().front();
    if (control && failed_) usable = false;
  }
  return usable;
}

bool ConnectionCheck::CheckSettings() {
  const LSSglobal& global = parts_.global;
  const std::filesystem::path folder = DataFolder(parts_.application_data);
  const std::filesystem::path file = folder / PathOf(kSettingsFileName);
  std::error_code ignored;
  LSSglobal read;
  const bool there = std::filesystem::exists(file, ignored);
  if (!there) {
    TellPlace("settings", CheckState::kNote, ToolText::kCheckDefaults, Utf8Of(file), std::nullopt);
  } else if (ReadSettings(read, parts_.application_data)) {
    Tell({.group = CheckGroup::kSettings, .step = "settings", .text = Utf8Of(file)});
  } else {
    TellPlace("settings", CheckState::kFailed, ToolText::kCheckUnreadable, Utf8Of(file),
              ToolText::kAdviceSettings);
  }
  const bool made = std::filesystem::exists(folder, ignored);
  if (!made || CanMakeFilesIn(folder)) {
    Tell({.group = CheckGroup::kSettings, .step = "folder", .text = Utf8Of(folder)});
  } else {
    TellPlace("folder", CheckState::kFailed, ToolText::kCheckNotWritable, Utf8Of(folder),
              ToolText::kAdviceFolder);
  }
  CheckRow values{.group = CheckGroup::kSettings, .step = "connection"};
  values.text = FilledText(TextOf(global, ToolText::kCheckValues),
                           {ConnectionText(global), std::to_string(TimeOutOf(global.Settings))});
  const bool demo = global.Settings.DemoMode == 1;
  if (demo) {
    values.state = CheckState::kFailed;
    values.text = TextOf(global, ToolText::kCheckDemo);
    values.advice = TextOf(global, ToolText::kAdviceDemo);
  }
  Tell(std::move(values));
  return !demo;
}

void ConnectionCheck::CheckProjector() {
  RunTrialOf(CheckGroup::kProjector,
             LinkTrialWords(parts_.global.Settings, parts_.recording.ForTrial()), kTrialOpen);
  parts_.recording.Complete();
}

TrialOutcome ConnectionCheck::RunTrialOf(CheckGroup group, const std::vector<std::string>& words,
                                         const std::string& first_step) {
  step_ = first_step;
  step_runs_ = false;
  failed_ = false;
  const TrialOutcome outcome = parts_.run(words, [this, group](std::string_view text) {
    const std::optional<TrialLine> line = TrialLineOf(text);
    if (!line) return;
    if (line->event == TrialEvent::kBegin) {
      step_ = line->step.step;
      step_runs_ = true;
    }
    if (line->event == TrialEvent::kRecord) parts_.recording.Adopt(line->record);
    if (line->event == TrialEvent::kEnd) TakeStep(group, line->step);
  });
  TellEnd(group, outcome);
  return outcome;
}

void ConnectionCheck::TakeStep(CheckGroup group, const TrialStep& step) {
  step_runs_ = false;
  CheckRow row{.group = group, .step = step.step, .state = step.state};
  if (group == CheckGroup::kProjector) row.milliseconds = step.milliseconds;
  if (step.category != kNoCategory) row.code = step.code;
  row.text = StepText(parts_.global, step);
  row.advice = StepAdvice(parts_.global, step);
  Tell(std::move(row));
}

// A trial that ended early failed at the step that it had begun, or behind its last one. A library
// may end the process in an orderly way, too.
void ConnectionCheck::TellEnd(CheckGroup group, const TrialOutcome& outcome) {
  const LSSglobal& global = parts_.global;
  if (outcome.end == TrialEnd::kDone && outcome.code == 0 && !step_runs_) return;
  if (outcome.end == TrialEnd::kStopped) {
    failed_ = true;
    if (verdict_.good || verdict_is_minor_) {
      verdict_ = {false, TextOf(global, ToolText::kCheckStopped), ""};
    }
    return;
  }
  CheckRow row{.group = group, .step = step_, .state = CheckState::kFailed};
  row.advice = TextOf(global, ToolText::kAdviceLibraryVersion);
  if (outcome.end == TrialEnd::kCrashed || outcome.end == TrialEnd::kDone) {
    row.text = FilledText(TextOf(global, ToolText::kCheckCrashed), {std::to_string(outcome.code)});
  } else if (outcome.end == TrialEnd::kHung) {
    row.text =
        FilledText(TextOf(global, ToolText::kCheckHung), {std::to_string(kTrialSilenceSeconds)});
  } else {
    row.text = TextOf(global, ToolText::kCheckNoProcess);
    row.advice.clear();
  }
  Tell(std::move(row));
}

void ConnectionCheck::Tell(CheckRow row) {
  row.group_name = GroupName(parts_.global, row.group);
  row.name = StepName(parts_.global, row.step);
  if (row.state == CheckState::kFailed) {
    failed_ = true;
    if (verdict_.good || verdict_is_minor_) {
      verdict_ = {false, row.name + ": " + row.text, row.advice};
      verdict_is_minor_ = row.step.starts_with(kBeamseekName);
    }
  }
  parts_.take(row);
}

void ConnectionCheck::TellPlace(std::string_view step, CheckState state, ToolText text,
                                const std::string& place, std::optional<ToolText> advice) {
  CheckRow row{.group = CheckGroup::kSettings, .step = std::string(step), .state = state};
  row.text = FilledText(TextOf(parts_.global, text), {place});
  if (advice) row.advice = TextOf(parts_.global, *advice);
  Tell(std::move(row));
}

}  // namespace warpline
