#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/command_sequences.h"
#include "cli/verbs.h"
#include "core/conversions.h"
#include "link/command_frames.h"
#include "link/projector_link.h"
#include "model/registers.h"

// frames: the bytes that the projector would be sent.

namespace warpline {

namespace {

// The command numbers of a comma-separated list; nothing when one of them cannot be sent.
std::optional<std::vector<int>> CommandNumbers(std::string_view list) {
  std::vector<int> numbers;
  for (;;) {
    const std::size_t comma = std::min(list.find(','), list.size());
    const std::optional<int> number = WholeNumber<int>(list.substr(0, comma), 0, kCommandStore);
    if (!number || !ComposeCommandText(*number, RegisterSet{}, 0)) return std::nullopt;
    numbers.push_back(*number);
    if (comma == list.size()) return numbers;
    list.remove_prefix(comma + 1);
  }
}

struct SendPlan {
  std::vector<int> commands;
  ModelAnswer model;
  std::int16_t mode = 0;
};

std::optional<SendPlan> PlanOf(const VerbInput& input, const Session& session) {
  const std::string& send = input.Text("--send");
  const auto* row = std::find_if(kCommandSequences.begin(), kCommandSequences.end(),
                                 [&send](const auto& each) { return each.name == send; });
  const bool is_sequence = row != kCommandSequences.end();
  const auto commands =
      is_sequence ? std::optional(std::vector<int>(row->commands.begin(), row->commands.end()))
                  : CommandNumbers(send);
  if (!commands) {
    session.UsageError(CliText::kBadSend, {send});
    return std::nullopt;
  }
  const std::optional<int> model_class = input.Number("--class", 0, 255, kStoreCommandClass);
  if (!model_class) return std::nullopt;
  const std::optional<int> reply5 = input.Number("--reply5", 0, 255, 0);
  if (!reply5) return std::nullopt;
  const std::optional<int> mode = input.Number("--mode", 0, 255, 0);
  if (!mode) return std::nullopt;
  const auto sent_mode = is_sequence ? row->mode : static_cast<std::int16_t>(*mode);
  return SendPlan{*commands, {*model_class, *reply5}, sent_mode};
}

std::optional<RegisterSet> LoadRegisters(const VerbInput& input, PanelSize panel,
                                         Session& session) {
  const std::filesystem::path path = input.Path("FILE");
  if (session.KindOf(path) == kTypeWlr) {
    if (!ReadRegisters(session, path)) return std::nullopt;
    const RegisterSet& read = session.engine.global.Registers;
    const std::optional<PanelSize> given =
        input.Has("--panel") ? std::optional(panel) : std::nullopt;
    const bool complete = session.OnFile(path, [&] {
      return ProjectorLink::RegistersComplete(read, given, session.engine.messages);
    });
    return complete ? std::optional(read) : std::nullopt;
  }
  if (!ReadCorrection(session, path)) return std::nullopt;
  return BuildRegisters(session.engine.global.Correction, panel);
}

// Nothing when the projector would refuse.
std::optional<Frame> FrameToSend(int number, const SendPlan& plan, const RegisterSet& registers) {
  if (number == kCommandStore) {
    const std::optional<StoreFrame> store = ComposeStore(registers, plan.model);
    return store ? std::optional(store->frame) : std::nullopt;
  }
  const std::optional<std::string> text = ComposeCommandText(number, registers, plan.mode);
  return text ? std::optional(FrameOf(*text)) : std::nullopt;
}

}  // namespace

int RunFrames(const VerbInput& input, Session& session) {
  const std::optional<SendPlan> plan = PlanOf(input, session);
  if (!plan) return kExitUsage;
  const std::optional<PanelSize> panel = input.Panel();
  if (!panel) return kExitUsage;
  const std::optional<RegisterSet> registers = LoadRegisters(input, *panel, session);
  if (!registers) return kExitFailed;
  for (const int number : plan->commands) {
    const std::optional<Frame> frame = FrameToSend(number, *plan, *registers);
    if (!frame) {
      session.engine.messages.ShowMessage(MessageCategory::kReply, kReplyNotSupported);
      return kExitFailed;
    }
    session.out << HexOf(*frame) << '\n';
  }
  return kExitOk;
}

}  // namespace warpline
