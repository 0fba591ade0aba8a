#include "app/check_texts.h"

#include <algorithm>
#include <array>
#include <limits>
#include <optional>

#include "app/link_trial.h"
#include "core/catalogue.h"
#include "core/conversions.h"
#include "core/link_results.h"
#include "core/messages.h"
#include "core/tool_texts.h"

namespace warpline {
namespace {

using T = ToolText;

constexpr std::array kGroupNames{T::kCheckGroupProgram, T::kCheckGroupLibraries,
                                 T::kCheckGroupSettings, T::kCheckGroupProjector};
constexpr std::array kStateNames{T::kCheckGood, T::kCheckNote, T::kCheckFailed};

struct StepRow {
  std::string_view step;
  T name;
};

constexpr std::array<StepRow, 11> kSteps{{
    {"version", T::kCheckStepVersion},
    {"settings", T::kCheckStepSettings},
    {"folder", T::kCheckStepFolder},
    {"connection", T::kCheckStepValues},
    {kTrialOpen, T::kCheckStepOpen},
    {kTrialRunning, T::kCheckStepRunning},
    {kTrialProbe, T::kCheckStepProbe},
    {kTrialClass, T::kCheckStepClass},
    {kTrialPanel, T::kCheckStepPanel},
    {kTrialMode, T::kCheckStepMode},
    {kTrialClose, T::kCheckStepClose},
}};

// A library's steps that are no entry points, and what a failed one calls for.
struct LibraryStepRow {
  std::string_view step;
  T name;
  T advice;
};

constexpr std::array<LibraryStepRow, 4> kLibrarySteps{{
    {kTrialFile, T::kCheckStepFile, T::kAdviceLibraryCopy},
    {kTrialKind, T::kCheckStepKind, T::kAdviceLibraryKind},
    {kTrialLoad, T::kCheckStepLoad, T::kAdviceLibraryLoad},
    {kTrialOthers, T::kCheckStepOthers, T::kAdviceLibraryVersion},
}};

constexpr int kAnyCode = std::numeric_limits<int>::max();

struct AdviceRow {
  MessageCategory category;
  int code;
  T advice;
};

// The first row that fits counts.
constexpr std::array<AdviceRow, 16> kAdvice{{
    {MessageCategory::kOpen, kOpenBadPort, T::kAdvicePort},
    {MessageCategory::kOpen, kOpenPortInUse, T::kAdviceInUse},
    {MessageCategory::kOpen, kOpenWinSock, T::kAdviceSockets},
    {MessageCategory::kOpen, kOpenSocket, T::kAdviceSockets},
    {MessageCategory::kOpen, kOpenBind, T::kAdviceSockets},
    {MessageCategory::kOpen, kOpenSelect, T::kAdviceSockets},
    {MessageCategory::kOpen, kOpenHost, T::kAdviceAddress},
    {MessageCategory::kOpen, kOpenConnect, T::kAdviceConnect},
    {MessageCategory::kOpen, kAnyCode, T::kAdviceConnection},
    {MessageCategory::kExchange, kBeamlinkNoResponse, T::kAdviceNoResponse},
    {MessageCategory::kExchange, kBeamlinkSendError, T::kAdviceLine},
    {MessageCategory::kExchange, kBeamlinkReceiveError, T::kAdviceLine},
    {MessageCategory::kTimeOut, kAnyCode, T::kAdviceLine},
    {MessageCategory::kReply, kReplyPowerOff, T::kAdvicePower},
    {MessageCategory::kReply, kReplyNotSupported, T::kAdviceOtherModel},
    {MessageCategory::kReply, kReplyFailed, T::kAdviceRestart},
}};

struct LibraryStep {
  std::string library;
  std::string step;
};

std::optional<LibraryStep> LibraryStepOf(std::string_view step) {
  const std::size_t dot = step.find('.');
  if (dot == std::string_view::npos) return std::nullopt;
  return LibraryStep{std::string(step.substr(0, dot)), std::string(step.substr(dot + 1))};
}

const LibraryStepRow* FindLibraryStep(std::string_view step) {
  const auto* row = std::find_if(kLibrarySteps.begin(), kLibrarySteps.end(),
                                 [step](const LibraryStepRow& each) { return each.step == step; });
  return row == kLibrarySteps.end() ? nullptr : row;
}

std::string LibraryText(const LSSglobal& global, const std::string& part, const TrialStep& step) {
  const bool failed = step.state == CheckState::kFailed;
  if (part == kTrialFile && failed) {
    return FilledText(TextOf(global, T::kCheckNoFile), {step.told});
  }
  if (part == kTrialKind && !failed) return FilledText(TextOf(global, T::kCheckBits), {step.told});
  if (part == kTrialKind) {
    const std::size_t blank = step.told.find(' ');
    if (blank == std::string::npos) return TextOf(global, T::kCheckNoLibrary);
    return FilledText(TextOf(global, T::kCheckOtherKind),
                      {step.told.substr(0, blank), step.told.substr(blank + 1)});
  }
  if (part == kTrialOthers && !step.told.empty()) {
    return FilledText(TextOf(global, T::kCheckOthersMissing), {step.told});
  }
  const bool entry = FindLibraryStep(part) == nullptr;
  return entry && failed ? TextOf(global, T::kCheckEntryMissing) : step.told;
}

// What the projector told, by the numbers that stand for it.
std::string PowerText(const LSSglobal& global, const std::string& told) {
  constexpr std::array kPowers{T::kCheckPowerStandby, T::kCheckPowerOn, T::kCheckPowerWarming,
                               T::kCheckPowerCooling};
  const auto power = WholeNumber<std::size_t>(told, 0, kPowers.size() - 1);
  return power ? TextOf(global, kPowers.at(*power))
               : FilledText(TextOf(global, T::kCheckPowerOther), {told});
}

std::string ClassText(const LSSglobal& global, const TrialStep& step) {
  if (step.state == CheckState::kGood) return step.told;
  return FilledText(TextOf(global, step.told == "0" ? T::kCheckNoClass : T::kCheckNoStore),
                    {step.told});
}

std::string PanelText(const LSSglobal& global, const TrialStep& step) {
  if (step.state == CheckState::kGood) return step.told;
  const std::size_t by = step.told.find('x');
  return FilledText(
      TextOf(global, T::kCheckPanelHidden),
      {step.told.substr(0, by), step.told.substr(std::min(by, step.told.size() - 1) + 1)});
}

std::string ModeText(const LSSglobal& global, const std::string& told) {
  const int caption = told == "0"   ? kMsgNormalMode
                      : told == "1" ? kMsgGeometricMode
                                    : kMsgOtherMode;
  return told + ": " + TextOf(global, caption);
}

}  // namespace

std::string GroupName(const LSSglobal& global, CheckGroup group) {
  return TextOf(global, kGroupNames.at(static_cast<std::size_t>(group)));
}

const std::string& StateName(const LSSglobal& global, CheckState state) {
  return TextOf(global, kStateNames.at(static_cast<std::size_t>(state)));
}

std::string StepName(const LSSglobal& global, std::string_view step) {
  if (const auto part = LibraryStepOf(step)) {
    const LibraryStepRow* row = FindLibraryStep(part->step);
    return FilledText(TextOf(global, row == nullptr ? T::kCheckStepEntry : row->name),
                      {part->library, part->step});
  }
  const auto* row = std::find_if(kSteps.begin(), kSteps.end(),
                                 [step](const StepRow& each) { return each.step == step; });
  return row == kSteps.end() ? std::string(step) : TextOf(global, row->name);
}

std::string StepText(const LSSglobal& global, const TrialStep& step) {
  if (step.category != kNoCategory) {
    return OutcomeText(global, static_cast<MessageCategory>(step.category), step.code);
  }
  if (const auto part = LibraryStepOf(step.step)) return LibraryText(global, part->step, step);
  if (step.step == kTrialRunning) return PowerText(global, step.told);
  if (step.step == kTrialClass) return ClassText(global, step);
  if (step.step == kTrialPanel) return PanelText(global, step);
  if (step.step == kTrialMode) return ModeText(global, step.told);
  return step.told;
}

std::string StepAdvice(const LSSglobal& global, const TrialStep& step) {
  if (step.step == kTrialRunning && step.state == CheckState::kNote) {
    return TextOf(global, T::kAdvicePower);
  }
  if (step.state != CheckState::kFailed) return {};
  if (const auto part = LibraryStepOf(step.step)) {
    const LibraryStepRow* row = FindLibraryStep(part->step);
    return TextOf(global, row == nullptr ? T::kAdviceLibraryVersion : row->advice);
  }
  const auto* row = std::find_if(kAdvice.begin(), kAdvice.end(), [&step](const AdviceRow& each) {
    return static_cast<int>(each.category) == step.category &&
           (each.code == step.code || each.code == kAnyCode);
  });
  return TextOf(global, row == kAdvice.end() ? T::kAdviceRestart : row->advice);
}

std::string RowText(const LSSglobal& global, const CheckRow& row, const CheckRow* before) {
  std::string text;
  if (before == nullptr || before->group != row.group) text.append(row.group_name).append("\n");
  text.append("  ").append(StateName(global, row.state)).append("\t").append(row.name);
  if (!row.text.empty()) text.append(": ").append(row.text);
  if (row.code) text.append(" (").append(std::to_string(*row.code)).append(")");
  if (row.milliseconds) text.append(", ").append(std::to_string(*row.milliseconds)).append(" ms");
  if (!row.advice.empty()) text.append("\n\t-> ").append(row.advice);
  return text + '\n';
}

std::string VerdictText(const LSSglobal& global, const CheckVerdict& verdict) {
  std::string text = TextOf(global, T::kCheckVerdict);
  text.append(": ").append(verdict.text);
  if (!verdict.advice.empty()) text.append(" -> ").append(verdict.advice);
  return text + '\n';
}

std::string CheckText(const LSSglobal& global, const std::vector<CheckRow>& rows,
                      const CheckVerdict& verdict) {
  std::string text;
  const CheckRow* before = nullptr;
  for (const CheckRow& row : rows) {
    text += RowText(global, row, before);
    before = &row;
  }
  return text + VerdictText(global, verdict);
}

}  // namespace warpline
