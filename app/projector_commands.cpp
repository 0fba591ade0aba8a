#include "app/projector_commands.h"

#include <algorithm>

#include "app/fault_report.h"
#include "model/registers.h"

namespace warpline {

ProjectorCommands::ProjectorCommands(LSSglobal& global, ProjectorLink& link,
                                     const Messages& messages, BusyIndicator& busy)
    : global_(global), link_(link), messages_(messages), busy_(busy) {}

bool ProjectorCommands::Apply() {
  const BusyBracket bracket(busy_);
  const bool done = RunLinked([this] { return BuildForPanel() && SendAll(kApplySequence); });
  global_.SecondCopy = global_.Correction.Axes;
  return done;
}

bool ProjectorCommands::Store() {
  const BusyBracket bracket(busy_);
  const bool done = RunLinked([this] { return BuildForPanel() && SendAll(kStoreSequence); });
  global_.SecondCopy = global_.Correction.Axes;
  return done;
}

bool ProjectorCommands::Initialize() {
  const BusyBracket bracket(busy_);
  const bool done = RunLinked([this] { return CheckConnection() && SendAll(kInitializeSequence); });
  for (const Axis axis : {kVertical, kHorizontal}) {
    global_.Correction.Axes[axis] = ResetAxisParameters(global_.Correction.Projection[axis]);
    global_.SecondCopy[axis] = global_.Correction.Axes[axis];
  }
  return done;
}

bool ProjectorCommands::SendRegisters() {
  const BusyBracket bracket(busy_);
  if (!ProjectorLink::RegistersComplete(global_.Registers, std::nullopt, messages_)) return false;
  return RunLinked([this] {
    return CheckConnection() &&
           ProjectorLink::RegistersComplete(global_.Registers, global_.Panel, messages_) &&
           SendAll(kApplySequence);
  });
}

std::optional<std::int16_t> ProjectorCommands::ReadMode() {
  const BusyBracket bracket(busy_);
  std::int16_t mode = 0;
  const bool done = RunLinked([this, &mode] {
    if (!CheckConnection()) return false;
    const auto answer = link_.QueryMode();
    mode = answer.value_or(0);
    return answer.has_value();
  });
  if (!done) return std::nullopt;
  global_.ProjectorMode = mode;
  return mode;
}

bool ProjectorCommands::SetMode(std::int16_t mode) {
  const BusyBracket bracket(busy_);
  return RunLinked([this, mode] {
    return CheckConnection() && Send(kCommandSetMode, mode) && link_.SwitchInput();
  });
}

bool ProjectorCommands::RunLinked(const std::function<bool()>& work) {
  if (global_.Settings.DemoMode == 1) return true;
  return ReportingFaults(
      messages_, [&] { return link_.OpenLink(global_.Settings) && work(); },
      [this] { return link_.CloseLink(); });
}

bool ProjectorCommands::CheckConnection() {
  const auto panel = link_.CheckConnection();
  if (panel) global_.Panel = *panel;
  return panel.has_value();
}

bool ProjectorCommands::BuildForPanel() {
  if (!CheckConnection()) return false;
  global_.Registers = BuildRegisters(global_.Correction, global_.Panel);
  return true;
}

bool ProjectorCommands::SendAll(const CommandSequence& sequence) {
  return std::all_of(
      sequence.commands.begin(), sequence.commands.end(),
      [this, &sequence](CommandNumber number) { return Send(number, sequence.mode); });
}

bool ProjectorCommands::Send(CommandNumber number, std::int16_t mode) {
  if (!link_.SendCommand(number, global_.Registers, mode)) return false;
  if (number == kCommandSetMode) global_.ProjectorMode = mode;
  return true;
}

}  // namespace warpline
