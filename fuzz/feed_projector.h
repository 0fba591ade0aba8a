#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include "core/conversions.h"
#include "sim/device/projector.h"

// Feeds bytes of any kind to the frame decoder and the projector behind it.

namespace warpline::sim {

// What must hold for one frame and its answer; empty when it does.
inline std::string FaultOfExchange(SimulatedProjector& projector, LinkMemory& link,
                                   ByteView frame) {
  const SimulatedProjector before = projector;
  const Bytes reply = projector.HandleFrame(link, frame);
  if (frame.size() < 2) return reply.empty() ? "" : "an answer to nothing";
  if (!IsWholeFrame(reply)) return "the reply is no whole frame";
  if (reply[0] != (frame[0] | kReplyBit) || reply[1] != frame[1]) return "another frame's reply";
  const PanelSize panel = projector.Setup().Panel;
  if (!RegistersFit(projector.Working(), panel) || !RegistersFit(projector.Stored(), panel)) {
    return "registers that do not fit the panel";
  }
  const bool same = projector.Working() == before.Working() &&
                    projector.Stored() == before.Stored() && projector.Mode() == before.Mode() &&
                    projector.Input() == before.Input();
  if (!IsWholeFrame(frame) && !same) return "a broken frame was executed";
  if (reply[kPayloadStart] != kAccepted && !HasHeader(frame, kModelClassHeader) && !same) {
    return "a refused frame was executed";
  }
  return "";
}

// Byte 0 chooses the projector, and with its highest bit set the frames' checksums are put right,
// which is the way to what lies behind the checksum. The rest is the stream. Returns what was
// wrong, empty when nothing was.
inline std::string FeedProjector(std::span<const std::uint8_t> data) {
  if (data.empty()) return "";
  ProjectorSetup setup;
  setup.Panel = data[0] % 2 == 0 ? PanelSize{64, 64} : PanelSize{128, 96};
  setup.ModelClass = data[0] / 2 % 8;
  setup.TakesCommands = data[0] / 16 % 4 != 3;
  const bool repair = data[0] >= 128;
  SimulatedProjector projector(setup, NeutralRegisters(setup.Panel));
  LinkMemory link;
  FrameReader reader;
  reader.Append(data.subspan(1));
  while (std::optional<Bytes> frame = reader.Next()) {
    if (repair && AnnouncedLength(*frame) == frame->size()) {
      frame->back() = Checksum(*frame, frame->size() - 1);
    }
    const std::string fault = FaultOfExchange(projector, link, *frame);
    if (!fault.empty()) return fault;
  }
  return "";
}

}  // namespace warpline::sim
