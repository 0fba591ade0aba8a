#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "core/register_set.h"
#include "sim/line/wire.h"

// Where the register texts stand in the data of the commands. Entries 0-8 are the horizontal axis's
// fields, 9-17 the vertical one's. The sender's own description is not used, so that a mistake in
// it shows as a refused frame instead of being shared.

namespace warpline::sim {

// The entries that a command of the data table carries, in order; empty for every other number.
std::span<const std::size_t> EntriesOf(int command);

// Bytes of an entry's text for a panel.
std::size_t EntryBytes(std::size_t entry, PanelSize panel);

// Writes the data of a command into the set; false, and nothing written, when the data's length is
// not that of the entries for this panel.
bool WriteEntries(std::span<const std::size_t> entries, ByteView data, PanelSize panel,
                  RegisterSet& registers);

// The register name with its axis: "h_panel_ext" for entry 0.
std::string EntryName(std::size_t entry);

// The text of an entry.
std::string& EntryText(RegisterSet& registers, std::size_t entry);
const std::string& EntryText(const RegisterSet& registers, std::size_t entry);

inline constexpr std::size_t kEntryCount = kAxisCount * kRegisterFieldCount;

// Both correction tables of the whole block share one field of this many bytes.
inline constexpr std::size_t kTableFieldBytes = 1536;

// The address that a whole block must name.
std::uint32_t WholeBlockAddress(int model_class, int reply5);

// The register set of a whole-block frame whose length and checksum are right. Nothing when the
// address, a length, or a byte between the two tables is not what this projector expects.
std::optional<RegisterSet> WholeBlockRegisters(ByteView frame, PanelSize panel,
                                               std::uint32_t address);

// True when both tables fit into the shared field.
bool TablesFit(PanelSize panel);

}  // namespace warpline::sim
