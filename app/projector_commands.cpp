#include "app/projector_commands.h"

#include <algorithm>

#include "app/fault_report.h"
#include "core/catalogue.h"
#include "core/tool_texts.h"
#include "model/registers.h"

namespace warpline {
namespace {

constexpr std::size_t StepsOf(const CommandSequence& sequence) {
  return sequence.commands.size();
}

}  // namespace

ProjectorCommands::ProjectorCommands(LSSglobal& global, ProjectorLink& link,
                                     const Messages& messages, HeldMessages& held,
                                     BusyIndicator& busy)
    : global_(global),
      link_(link),
      messages_(messages),
      held_(held),
      busy_(busy),
      sent_(global.Correction) {}

bool ProjectorCommands::Apply() {
  return SendShown(BusyKind::kCommand);
}

bool ProjectorCommands::Follow() {
  return SendShown(BusyKind::kFollowing);
}

bool ProjectorCommands::SendShown(BusyKind kind) {
  const BusyBracket bracket(busy_, kind);
  sent_ = global_.Correction;
  const bool done =
      RunLinked(kind, StepsOf(kApplySequence), [this] { return BuildForPanel() && ShowBuilt(); });
  global_.SecondCopy = sent_.Axes;
  return done;
}

bool ProjectorCommands::Store() {
  const BusyBracket bracket(busy_);
  sent_ = global_.Correction;
  const bool done = RunLinked(BusyKind::kCommand, StepsOf(kStoreSequence),
                              [this] { return BuildForPanel() && KeepShown(); });
  global_.SecondCopy = sent_.Axes;
  return done;
}

bool ProjectorCommands::AskAndStore() {
  if (global_.Settings.DemoMode == 1 || record_.Shows(global_.Correction)) return Store();
  const BusyBracket bracket(busy_);
  sent_ = global_.Correction;
  bool keeps_shown = false;
  bool done = RunLinked(BusyKind::kCommand, StepsOf(kStoreSequence), [this, &keeps_shown] {
    if (!BuildForPanel()) return false;
    const auto model = link_.AskModelClass();
    keeps_shown = model && model->model_class >= kStoreCommandClass;
    return keeps_shown || (model && KeepShown());
  });
  if (done && keeps_shown) done = StoreAsTold();
  global_.SecondCopy = sent_.Axes;
  return done;
}

// The link is closed while the user thinks.
bool ProjectorCommands::StoreAsTold() {
  enum Answer : std::size_t { kSendAndStore, kStoreShown, kCancel };
  const std::size_t answer =
      messages_.Choose(TextOf(global_, ToolText::kStoreQuestion), MessageIcon::kQuestion,
                       {TextOf(global_, ToolText::kSendAndStore),
                        TextOf(global_, ToolText::kStoreShown), TextOf(global_, kMsgCancel)});
  if (answer == kCancel) return false;
  if (answer == kStoreShown) return Store();
  return RunLinked(BusyKind::kCommand, StepsOf(kApplySequence) + StepsOf(kStoreSequence),
                   [this] { return BuildForPanel() && ShowBuilt() && KeepShown(); });
}

bool ProjectorCommands::Initialize() {
  const BusyBracket bracket(busy_);
  const bool done = ClearShown();
  for (const Axis axis : {kVertical, kHorizontal}) {
    global_.Correction.Axes[axis] = ResetAxisParameters(global_.Correction.Projection[axis]);
    global_.SecondCopy[axis] = global_.Correction.Axes[axis];
  }
  sent_ = global_.Correction;
  return done;
}

bool ProjectorCommands::SendRegisters() {
  const BusyBracket bracket(busy_);
  if (!ProjectorLink::RegistersComplete(global_.Registers, std::nullopt, messages_)) return false;
  return RunLinked(BusyKind::kCommand, StepsOf(kApplySequence), [this] {
    if (!CheckConnection() ||
        !ProjectorLink::RegistersComplete(global_.Registers, global_.Panel, messages_) ||
        !SendAll(kApplySequence)) {
      return false;
    }
    NoteShown({Shown::kRegisters, {}, false});
    return true;
  });
}

bool ProjectorCommands::ClearShown() {
  return RunLinked(BusyKind::kCommand, StepsOf(kInitializeSequence), [this] {
    if (!CheckConnection() || !SendAll(kInitializeSequence)) return false;
    NoteShown({Shown::kNone, {}, false});
    return true;
  });
}

bool ProjectorCommands::ShowNone() {
  const BusyBracket bracket(busy_);
  const bool done = ClearShown();
  comparing_ = done && global_.Settings.DemoMode != 1;
  return done;
}

std::optional<std::int16_t> ProjectorCommands::ReadMode() {
  const BusyBracket bracket(busy_);
  std::int16_t told = 0;
  const bool done = RunLinked(BusyKind::kCommand, 0, [this, &told] {
    if (!CheckConnection()) return false;
    const auto answer = link_.QueryMode();
    told = answer.value_or(0);
    return answer.has_value();
  });
  if (!done) return std::nullopt;
  NoteMode(told);
  return global_.ProjectorMode;
}

void ProjectorCommands::NoteMode(std::int16_t told) {
  global_.ProjectorMode = told == 1 ? 1 : 0;
  global_.OtherModeTold = told > 1;
}

std::optional<ProjectorReport> ProjectorCommands::AskReport() {
  const BusyBracket bracket(busy_);
  std::optional<ProjectorReport> report;
  const bool done = RunLinked(BusyKind::kCommand, 0, [this, &report] {
    if (!CheckConnection()) return false;
    const auto model = link_.AskModelClass();
    const auto mode = model ? link_.QueryMode() : std::nullopt;
    if (mode) report = {global_.Panel, model->model_class, *mode};
    return mode.has_value();
  });
  if (!done) return std::nullopt;
  if (report) NoteMode(report->mode);
  return report;
}

bool ProjectorCommands::SetMode(std::int16_t mode) {
  const BusyBracket bracket(busy_);
  return RunLinked(BusyKind::kCommand, 0, [this, mode] {
    return CheckConnection() && Send(kCommandSetMode, mode) && link_.SwitchInput();
  });
}

bool ProjectorCommands::RunLinked(BusyKind kind, std::size_t steps,
                                  const std::function<bool()>& work) {
  if (global_.Settings.DemoMode == 1) return true;
  for (;;) {
    held_.Hold();
    const bool done = RunOnce(steps, work);
    const std::vector<UserMessage> failures = held_.Release();
    closed_();
    if (!TellFailures(failures, kind)) return done;
  }
}

bool ProjectorCommands::RunOnce(std::size_t steps, const std::function<bool()>& work) {
  step_ = 0;
  steps_ = static_cast<int>(steps);
  reached_ = cleared_ = false;
  busy_.ShowStep(0, steps_);
  const bool done = ReportingFaults(
      messages_, [&] { return link_.OpenLink(global_.Settings) && work(); },
      [this] { return link_.CloseLink(); });
  busy_.EndSteps();
  stopped_ = !done && busy_.Cancelled();
  // A projector that could not be asked may have been switched off meanwhile.
  if (!done && !reached_ && !stopped_) record_ = {};
  return done;
}

bool ProjectorCommands::TellFailures(const std::vector<UserMessage>& failures, BusyKind kind) {
  if (failures.empty()) {
    if (!stopped_) last_failure_.clear();
    repeated_failure_.clear();
    return false;
  }
  const bool repeated = kind == BusyKind::kFollowing && failures.front().text == last_failure_;
  last_failure_ = failures.front().text;
  repeated_failure_ = repeated ? last_failure_ : "";
  if (repeated) return false;
  for (const UserMessage& failure : failures) {
    const bool last = &failure == &failures.back();
    if (last && cleared_) {
      UserMessage question = failure;
      question.choices = {TextOf(global_, ToolText::kSendAgain), TextOf(global_, ToolText::kClose)};
      return held_.Show(question) == 0;
    }
    held_.Show(failure);
  }
  return false;
}

bool ProjectorCommands::CheckConnection() {
  const auto panel = link_.CheckConnection();
  if (panel) global_.Panel = *panel;
  reached_ = panel.has_value();
  global_.PanelReported = global_.PanelReported || reached_;
  return reached_;
}

bool ProjectorCommands::BuildForPanel() {
  if (!CheckConnection()) return false;
  sent_ = global_.Correction;
  global_.Registers = BuildRegisters(sent_, global_.Panel);
  return true;
}

bool ProjectorCommands::ShowBuilt() {
  const bool kept = record_.kept && record_.Shows(sent_);
  if (!SendAll(kApplySequence)) return false;
  NoteShown({Shown::kCorrection, sent_, kept});
  return true;
}

void ProjectorCommands::NoteShown(const ProjectorRecord& record) {
  record_ = record;
  cleared_ = false;
}

// Below class 5 the projector is given the correction together with the order to keep it.
bool ProjectorCommands::KeepShown() {
  ProjectorRecord record = record_;
  record.kept = SendAll(kStoreSequence);
  const auto model = link_.AskedModelClass();
  const bool gives = !model || model->model_class < kStoreCommandClass;
  if (gives && record.kept) record = {Shown::kCorrection, sent_, true};
  if (!gives || record.kept) NoteShown(record);
  return record.kept;
}

// What the projector shows is known again when all of it has arrived.
bool ProjectorCommands::SendAll(const CommandSequence& sequence) {
  return std::all_of(sequence.commands.begin(), sequence.commands.end(),
                     [this, &sequence](CommandNumber number) {
                       busy_.ShowStep(++step_, steps_);
                       if (busy_.Cancelled()) return false;
                       record_ = {};
                       comparing_ = false;
                       cleared_ = cleared_ || number == kCommandClear;
                       return Send(number, sequence.mode);
                     });
}

bool ProjectorCommands::Send(CommandNumber number, std::int16_t mode) {
  if (!link_.SendCommand(number, global_.Registers, mode)) return false;
  if (number == kCommandSetMode) {
    global_.ProjectorMode = mode;
    global_.OtherModeTold = false;
  }
  return true;
}

}  // namespace warpline
