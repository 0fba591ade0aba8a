#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

#include "link/command_frames.h"

// What Apply, Store and Initialize send once the projector has been checked, in order. The buttons
// and the command line walk the same rows.

namespace warpline {

struct CommandSequence {
  std::string_view name;  // as the command line calls it
  std::span<const CommandNumber> commands;
  std::int16_t mode = 0;  // the picture mode that command 18 asks for
};

inline constexpr std::array kApplyCommands{
    kCommandPrepare,           kCommandClear,           kCommandHorizontalSet, kCommandVerticalSet,
    kCommandHorizontalStadium, kCommandVerticalStadium, kCommandShow};
inline constexpr std::array kStoreCommands{kCommandStore, kCommandSetMode};
inline constexpr std::array kInitializeCommands{kCommandPrepare, kCommandClear, kCommandShow};

// The picture mode in which the projector shows its correction.
inline constexpr std::int16_t kGeometricCorrectionMode = 1;

inline constexpr CommandSequence kApplySequence{"apply", kApplyCommands};
inline constexpr CommandSequence kStoreSequence{"store", kStoreCommands, kGeometricCorrectionMode};
inline constexpr CommandSequence kInitializeSequence{"initialize", kInitializeCommands};
inline constexpr std::array kCommandSequences{kApplySequence, kStoreSequence, kInitializeSequence};

}  // namespace warpline
