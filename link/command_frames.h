#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/register_set.h"

// The projector's command frames. A frame is composed as a text of hex digit pairs ("cs" stands for
// the checksum) and then converted to bytes:
//   0-2 header, 3-4 count of the bytes from byte 5 up to the checksum (most significant byte
//   first), 5-6 sub-command, with data: 7-8 number of data bytes (least significant byte
//   first), 9... data; last the checksum.

namespace warpline {

using Frame = std::vector<std::uint8_t>;

enum CommandNumber : int {
  kCommandClear = 0,
  kCommandShow = 1,
  kCommandHorizontalSet = 2,
  kCommandVerticalSet = 3,
  kCommandHorizontalCorrection = 4,
  kCommandVerticalCorrection = 5,
  kCommandHorizontalPanelExt = 6,
  kCommandVerticalPanelExt = 7,
  kCommandHorizontalScroll = 8,
  kCommandVerticalScroll = 9,
  kCommandHorizontalOptCenter = 10,
  kCommandVerticalOptCenter = 11,
  kCommandHorizontalLinearity = 12,
  kCommandHorizontalCompDisp = 14,
  kCommandHorizontalStadium = 16,
  kCommandVerticalStadium = 17,
  kCommandSetMode = 18,
  kCommandQueryMode = 19,
  kCommandPrepare = 20,
  kCommandStore = 21,
};

// Fixed query frames, without their checksum.
inline constexpr std::string_view kProbeText = "01DF000000cs";
inline constexpr std::string_view kModelClassText = "008500000100cs";

// The first model class that stores by command 21; below it the whole block is sent, below 3
// nothing.
inline constexpr int kStoreCommandClass = 5;
inline constexpr int kWholeBlockClass = 3;

// Both correction tables share this many bytes of the whole block.
inline constexpr int kWholeBlockTableBytes = 1536;
inline constexpr std::size_t kWholeBlockTableStart = 12;

// The text of a command of the table; nothing for a number that must not be sent (13, 15) or does
// not exist. An empty comp_disp counts as "00". mode is the value byte of command 18.
std::optional<std::string> ComposeCommandText(int number, const RegisterSet& registers,
                                              std::int16_t mode);

// The bytes of a command text.
Frame FrameOf(std::string_view text);

// What a projector tells of its model; class 0 when it knows no model classes.
struct ModelAnswer {
  int model_class = 0;
  int reply5 = 0;  // byte 5 of the answer
};

// How a model stores: by command 21, or by the whole block, which takes the projector longer.
struct StoreFrame {
  Frame frame;
  bool whole_block = false;
};

// Nothing when the model cannot store, or when the two tables do not fit into the whole block's
// shared field.
std::optional<StoreFrame> ComposeStore(const RegisterSet& registers, ModelAnswer model);

}  // namespace warpline
