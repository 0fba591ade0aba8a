#include "sim/device/projector.h"

#include <algorithm>
#include <array>
#include <utility>

#include "core/conversions.h"
#include "sim/device/register_layout.h"

namespace warpline::sim {
namespace {

constexpr int kWholeBlockClass = 3;
constexpr int kStoreCommandClass = 5;
constexpr int kHighestMode = 2;
constexpr std::int32_t kFirstInput = 1;

constexpr int kClearCommand = 0x00;
constexpr int kShowCommand = 0x01;
constexpr int kStoreCommand = 0x12;

std::size_t PayloadSize(ByteView frame) {
  return frame.size() - kPayloadStart - 1;
}

AxisRegisters NeutralAxis(int line_count) {
  AxisRegisters axis;
  for (std::size_t field = 0; field < kRegisterFieldCount; ++field) {
    axis[field] = std::string(kRegisterFields[field].hex_digits, '0');
  }
  axis[kCorre0] = "0080";
  axis[kCorre2] = std::string(Corre2Digits(line_count), '0');
  return axis;
}

}  // namespace

RegisterSet NeutralRegisters(PanelSize panel) {
  return {NeutralAxis(LineCount(panel, kHorizontal)), NeutralAxis(LineCount(panel, kVertical))};
}

bool RegistersFit(const RegisterSet& registers, PanelSize panel) {
  for (std::size_t entry = 0; entry < kEntryCount; ++entry) {
    const std::string& text = EntryText(registers, entry);
    if (text.size() != 2 * EntryBytes(entry, panel)) return false;
    if (!std::ranges::all_of(text, IsHexDigit)) return false;
  }
  return true;
}

SimulatedProjector::SimulatedProjector(const ProjectorSetup& setup, const RegisterSet& stored)
    : setup_(setup),
      incoming_(NeutralRegisters(setup.Panel)),
      working_(stored),
      stored_(stored),
      input_(kFirstInput) {}

// What each header means, and on which condition it is executed.
struct SimulatedProjector::HeaderRow {
  FrameHeader header;
  Bytes (SimulatedProjector::*handle)(LinkMemory&, ByteView);
  bool needs_power;
};

const SimulatedProjector::HeaderRow* SimulatedProjector::FindHeader(ByteView frame) {
  static constexpr std::array<HeaderRow, 6> kRows{{
      {kDataHeader, &SimulatedProjector::HandleData, true},
      {kModeHeader, &SimulatedProjector::HandleMode, true},
      {kPrepareHeader, &SimulatedProjector::HandlePrepare, true},
      {kWholeBlockHeader, &SimulatedProjector::HandleWholeBlock, true},
      {kModelClassHeader, &SimulatedProjector::HandleModelClass, false},
      {kLibraryHeader, &SimulatedProjector::HandleLibrary, false},
  }};
  const auto* row = std::ranges::find_if(
      kRows, [frame](const HeaderRow& candidate) { return HasHeader(frame, candidate.header); });
  return row == kRows.end() ? nullptr : row;
}

Bytes SimulatedProjector::HandleFrame(LinkMemory& link, ByteView frame) {
  if (frame.size() < 2) return {};
  const bool echo = HasHeader(frame, kLibraryHeader) && frame.size() > kPayloadStart &&
                    frame[kPayloadStart] == kEchoOperation;
  if (!echo) ++counters_.Exchanges;
  if (!IsWholeFrame(frame)) return Answer(frame, {kRefused});
  const HeaderRow* row = FindHeader(frame);
  if (row == nullptr) return Answer(frame, {kNotSupported});
  if (row->needs_power && setup_.PowerState != Power::kOn) {
    return Answer(frame, {kPowerOff, 0});
  }
  return (this->*row->handle)(link, frame);
}

Bytes SimulatedProjector::Refuse(ByteView frame) {
  if (frame.size() < 2) return {};
  ++counters_.Exchanges;
  return Answer(frame, {kRefused});
}

void SimulatedProjector::Ignore(ByteView frame) {
  if (frame.size() >= 2) ++counters_.Exchanges;
}

Bytes SimulatedProjector::HandleWithoutKeeping(ByteView frame) {
  SimulatedProjector other = *this;
  LinkMemory forgotten;
  Bytes reply = other.HandleFrame(forgotten, frame);
  counters_.Exchanges = other.counters_.Exchanges;
  counters_.Refused = other.counters_.Refused;
  return reply;
}

void SimulatedProjector::Restart() {
  incoming_ = NeutralRegisters(setup_.Panel);
  working_ = stored_;
  mode_ = 0;
  input_ = kFirstInput;
}

// Every answer but the model class's begins with the error byte.
Bytes SimulatedProjector::Answer(ByteView frame, Bytes payload) {
  if (payload[0] != kAccepted) ++counters_.Refused;
  return MakeReply(frame, payload);
}

Bytes SimulatedProjector::HandleData(LinkMemory& link, ByteView frame) {
  if (setup_.ModelClass < kCorrectionClass) return Answer(frame, {kNotSupported});
  const std::size_t payload = PayloadSize(frame);
  if (payload == 0) return Answer(frame, {kAccepted});  // the probe
  if (payload < 2 || frame[6] != 0) return Answer(frame, {kRefused});
  if (!setup_.TakesCommands) return Answer(frame, {kNotSupported});
  const int number = frame[5];
  if (EntriesOf(number).empty()) {
    return Answer(frame, {payload == 2 ? RunBareCommand(link, number) : kRefused});
  }
  if (payload < 4) return Answer(frame, {kRefused});
  const std::size_t announced = frame[7] | std::size_t{frame[8]} << 8;
  if (announced != payload - 4) return Answer(frame, {kRefused});
  return Answer(frame, {WriteRegisters(number, frame.subspan(9, announced))});
}

ErrorByte SimulatedProjector::RunBareCommand(LinkMemory& link, int number) {
  switch (number) {
    case kClearCommand:
      incoming_ = NeutralRegisters(setup_.Panel);
      return kAccepted;
    case kShowCommand:
      Show(incoming_);
      return kAccepted;
    case kStoreCommand:
      return setup_.ModelClass < kStoreCommandClass ? kNotSupported : Store(link);
    default:
      return kNotSupported;
  }
}

ErrorByte SimulatedProjector::WriteRegisters(int number, ByteView data) {
  return WriteEntries(EntriesOf(number), data, setup_.Panel, incoming_) ? kAccepted : kRefused;
}

ErrorByte SimulatedProjector::Store(LinkMemory& link) {
  stored_ = working_;
  ++counters_.Stores;
  link.Stored = true;
  SettleMode(link, false);
  return kAccepted;
}

void SimulatedProjector::Show(const RegisterSet& registers) {
  working_ = registers;
  ++counters_.Shows;
}

// A wish for mode 1 comes true when the input is selected again, or once a store has succeeded
// over the same link, whichever of the two came first.
void SimulatedProjector::SettleMode(LinkMemory& link, bool input_selected) {
  if (!link.ModeOneAsked || !(link.Stored || input_selected)) return;
  mode_ = 1;
  link.ModeOneAsked = false;
}

// Asking for the mode and asking for mode 1 are the same frame.
Bytes SimulatedProjector::HandleMode(LinkMemory& link, ByteView frame) {
  if (PayloadSize(frame) != 2 || frame[5] > kHighestMode || frame[6] != 0) {
    return Answer(frame, {kRefused, static_cast<std::uint8_t>(mode_)});
  }
  link.ModeOneAsked = frame[5] == 1;
  if (!link.ModeOneAsked) mode_ = frame[5];
  SettleMode(link, false);
  return Answer(frame, {kAccepted, static_cast<std::uint8_t>(mode_)});
}

Bytes SimulatedProjector::HandlePrepare(LinkMemory&, ByteView frame) {
  if (PayloadSize(frame) != 2 || frame[5] != 2 || frame[6] != 1) return Answer(frame, {kRefused});
  return Answer(frame, {setup_.ModelClass < kCorrectionClass ? kNotSupported : kAccepted});
}

Bytes SimulatedProjector::HandleModelClass(LinkMemory&, ByteView frame) {
  if (PayloadSize(frame) != 1 || frame[5] != 0) return Answer(frame, {kRefused});
  return MakeReply(frame, Bytes{static_cast<std::uint8_t>(setup_.Reply5), 0,
                                static_cast<std::uint8_t>(setup_.ModelClass)});
}

Bytes SimulatedProjector::HandleWholeBlock(LinkMemory& link, ByteView frame) {
  const int model_class = setup_.ModelClass;
  if (model_class < kWholeBlockClass || model_class >= kStoreCommandClass ||
      !TablesFit(setup_.Panel)) {
    return Answer(frame, {kNotSupported});
  }
  const std::optional<RegisterSet> registers =
      WholeBlockRegisters(frame, setup_.Panel, WholeBlockAddress(model_class, setup_.Reply5));
  if (!registers) return Answer(frame, {kRefused});
  Show(*registers);
  return Answer(frame, {Store(link)});
}

Bytes SimulatedProjector::HandleLibrary(LinkMemory& link, ByteView frame) {
  const std::size_t arguments = PayloadSize(frame) == 0 ? 0 : PayloadSize(frame) - 1;
  const int operation = PayloadSize(frame) == 0 ? 0 : frame[kPayloadStart];
  const auto power = static_cast<std::uint8_t>(setup_.PowerState);
  Bytes payload{kAccepted};
  if (operation == kRunningOperation && arguments == 0) {
    payload.push_back(power);
  } else if (operation == kPanelOperation && arguments == 0) {
    if (!setup_.ReportsPanel) return Answer(frame, {kNotSupported});
    AppendWord(payload, static_cast<std::uint32_t>(setup_.Panel.Width) |
                            static_cast<std::uint32_t>(setup_.Panel.Height) << 16);
  } else if (operation == kStatusOperation && arguments == 0) {
    payload.push_back(power);
    AppendWord(payload, static_cast<std::uint32_t>(input_));
  } else if (operation == kInputOperation && arguments == 4) {
    if (setup_.PowerState != Power::kOn) return Answer(frame, {kPowerOff});
    input_ = static_cast<std::int32_t>(ReadWord(frame, kPayloadStart + 1));
    SettleMode(link, true);
  } else if (operation == kEchoOperation && arguments == 4) {
    AppendWord(payload, ReadWord(frame, kPayloadStart + 1));
  } else {
    return Answer(frame, {kRefused});
  }
  return Answer(frame, std::move(payload));
}

}  // namespace warpline::sim
