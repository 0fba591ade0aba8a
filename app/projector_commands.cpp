#include "app/projector_commands.h"

#include <algorithm>
#include <utility>

#include "core/fault.h"
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
  const bool done = RunLinked([this] {
    return BuildForPanel() && link_.SendCommand(kCommandStore) &&
           SendMode(kGeometricCorrectionMode);
  });
  global_.SecondCopy = global_.Correction.Axes;
  return done;
}

bool ProjectorCommands::Initialize() {
  const BusyBracket bracket(busy_);
  const bool done =
      RunLinked([this] { return link_.CheckConnection() && SendAll(kInitializeSequence); });
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
    return link_.CheckConnection() &&
           ProjectorLink::RegistersComplete(global_.Registers, global_.Panel, messages_) &&
           SendAll(kApplySequence);
  });
}

std::optional<std::int16_t> ProjectorCommands::ReadMode() {
  const BusyBracket bracket(busy_);
  std::int16_t mode = 0;
  const bool done = RunLinked([this, &mode] {
    if (!link_.CheckConnection()) return false;
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
  return RunLinked(
      [this, mode] { return link_.CheckConnection() && SendMode(mode) && link_.SwitchInput(); });
}

bool ProjectorCommands::RunLinked(const std::function<bool()>& work) {
  if (global_.Settings.DemoMode == 1) return true;
  std::optional<FaultCode> fault;
  bool done = false;
  try {
    done = link_.OpenLink() && work();
  } catch (const Fault& thrown) {
    fault = thrown.code();
  }
  const bool closed = link_.CloseLink();
  if (fault) messages_.ShowFault(*fault);
  return done && closed;
}

bool ProjectorCommands::SendAll(std::span<const CommandNumber> commands) {
  return std::all_of(commands.begin(), commands.end(),
                     [this](CommandNumber number) { return link_.SendCommand(number); });
}

bool ProjectorCommands::SendMode(std::int16_t mode) {
  const std::int16_t previous = std::exchange(global_.ProjectorMode, mode);
  if (link_.SendCommand(kCommandSetMode)) return true;
  global_.ProjectorMode = previous;
  return false;
}

bool ProjectorCommands::BuildForPanel() {
  if (!link_.CheckConnection()) return false;
  global_.Registers = BuildRegisters(global_.Correction, global_.Panel);
  return true;
}

}  // namespace warpline
