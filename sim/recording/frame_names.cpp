#include "sim/recording/frame_names.h"

#include <algorithm>
#include <array>

#include "core/conversions.h"
#include "sim/device/register_layout.h"

namespace warpline::sim {
namespace {

struct NameRow {
  FrameHeader header;
  int byte5;
  ProjectorText text;
};

constexpr std::array kNames{
    NameRow{kModelClassHeader, kAnyByte, ProjectorText::kFrameClass},
    NameRow{kLibraryHeader, kRunningOperation, ProjectorText::kFrameRunning},
    NameRow{kLibraryHeader, kPanelOperation, ProjectorText::kFramePanel},
    NameRow{kLibraryHeader, kStatusOperation, ProjectorText::kFrameStatus},
    NameRow{kLibraryHeader, kInputOperation, ProjectorText::kFrameInput},
    NameRow{kLibraryHeader, kEchoOperation, ProjectorText::kFrameEcho},
    NameRow{kPrepareHeader, kAnyByte, ProjectorText::kFramePrepare},
    NameRow{kModeHeader, kAnyByte, ProjectorText::kFrameMode},
    NameRow{kWholeBlockHeader, kAnyByte, ProjectorText::kFrameBlock},
    NameRow{kDataHeader, 0x00, ProjectorText::kFrameClear},
    NameRow{kDataHeader, 0x01, ProjectorText::kFrameShow},
    NameRow{kDataHeader, 0x12, ProjectorText::kFrameStore},
};

}  // namespace

std::string FrameName(const ProjectorTexts& texts, ByteView frame) {
  const bool is_data = HasHeader(frame, kDataHeader);
  if (is_data && frame.size() <= kPayloadStart + 1) return texts[ProjectorText::kFrameProbe];
  const int byte5 = frame.size() > kPayloadStart ? frame[kPayloadStart] : kAnyByte;
  const auto* row = std::ranges::find_if(kNames, [&](const NameRow& candidate) {
    return HasHeader(frame, candidate.header) &&
           (candidate.byte5 == kAnyByte || candidate.byte5 == byte5);
  });
  if (row != kNames.end()) return texts[row->text];
  if (!is_data || EntriesOf(byte5).empty()) return texts[ProjectorText::kFrameUnknown];
  return texts.Fill(ProjectorText::kFrameRegisters, {std::to_string(byte5)});
}

std::string FrameHex(ByteView frame, std::size_t most_bytes) {
  const std::string text = HexOf(frame.first(std::min(frame.size(), most_bytes)), " ");
  return frame.size() > most_bytes ? text + " ..." : text;
}

}  // namespace warpline::sim
