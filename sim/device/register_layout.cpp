#include "sim/device/register_layout.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <vector>

#include "core/conversions.h"

namespace warpline::sim {
namespace {

struct CommandRow {
  int command;
  std::array<std::size_t, 7> entries;
  std::size_t entry_count;
};

constexpr std::array kCommandRows{
    CommandRow{2, {0, 1, 6, 7, 2, 3, 8}, 7},
    CommandRow{3, {9, 10, 15, 16, 11, 12, 17}, 7},
    CommandRow{4, {6, 7, 8}, 3},
    CommandRow{5, {15, 16, 17}, 3},
    CommandRow{6, {0}, 1},
    CommandRow{7, {9}, 1},
    CommandRow{8, {1}, 1},
    CommandRow{9, {10}, 1},
    CommandRow{10, {2}, 1},
    CommandRow{11, {11}, 1},
    CommandRow{12, {3}, 1},
    CommandRow{14, {4}, 1},
    CommandRow{16, {5}, 1},
    CommandRow{17, {14}, 1},
};

constexpr std::array<std::size_t, 16> kWholeBlockEntries{0, 9,  1, 10, 6, 15, 7, 16,
                                                         2, 11, 3, 12, 4, 13, 5, 14};
constexpr std::size_t kHorizontalTable = 8;
constexpr std::size_t kVerticalTable = 17;

constexpr std::size_t kAddressStart = 5;
constexpr std::size_t kBlockLengthStart = 9;
constexpr std::size_t kBlockDataStart = 12;

std::size_t BytesOf(std::span<const std::size_t> entries, PanelSize panel) {
  return std::accumulate(
      entries.begin(), entries.end(), std::size_t{0},
      [panel](std::size_t sum, std::size_t entry) { return sum + EntryBytes(entry, panel); });
}

bool LengthsAgree(ByteView frame, PanelSize panel) {
  const std::size_t length = kTableFieldBytes + BytesOf(kWholeBlockEntries, panel);
  const std::size_t announced = frame[kBlockLengthStart] | std::size_t{frame[kBlockLengthStart + 1]}
                                                               << 8;
  return frame.size() == kBlockDataStart + length + 1 && announced == length &&
         frame[kBlockDataStart - 1] == 0;
}

}  // namespace

std::span<const std::size_t> EntriesOf(int command) {
  const auto* row = std::ranges::find(kCommandRows, command, &CommandRow::command);
  if (row == kCommandRows.end()) return {};
  return std::span(row->entries).first(row->entry_count);
}

std::size_t EntryBytes(std::size_t entry, PanelSize panel) {
  const auto axis = static_cast<Axis>(entry / kRegisterFieldCount);
  const std::size_t field = entry % kRegisterFieldCount;
  if (field == kCorre2) return Corre2Digits(LineCount(panel, axis)) / 2;
  return kRegisterFields[field].hex_digits / 2;
}

bool WriteEntries(std::span<const std::size_t> entries, ByteView data, PanelSize panel,
                  RegisterSet& registers) {
  if (data.size() != BytesOf(entries, panel)) return false;
  for (const std::size_t entry : entries) {
    const std::size_t length = EntryBytes(entry, panel);
    EntryText(registers, entry) = HexOf(data.first(length));
    data = data.subspan(length);
  }
  return true;
}

std::string EntryName(std::size_t entry) {
  const char* axis = entry < kRegisterFieldCount ? "h_" : "v_";
  return axis + std::string(kRegisterFields[entry % kRegisterFieldCount].name);
}

std::string& EntryText(RegisterSet& registers, std::size_t entry) {
  return registers[entry / kRegisterFieldCount][entry % kRegisterFieldCount];
}

const std::string& EntryText(const RegisterSet& registers, std::size_t entry) {
  return registers[entry / kRegisterFieldCount][entry % kRegisterFieldCount];
}

std::uint32_t WholeBlockAddress(int model_class, int reply5) {
  const bool low = model_class == 3 || (model_class == 4 && (reply5 == 11 || reply5 == 13));
  return low ? 0x45000 : 0x46000;
}

std::optional<RegisterSet> WholeBlockRegisters(ByteView frame, PanelSize panel,
                                               std::uint32_t address) {
  if (frame.size() < kBlockDataStart || !TablesFit(panel) || !LengthsAgree(frame, panel) ||
      ReadWord(frame, kAddressStart) != address) {
    return std::nullopt;
  }
  const ByteView tables = frame.subspan(kBlockDataStart, kTableFieldBytes);
  const std::size_t v_length = EntryBytes(kVerticalTable, panel);
  const std::size_t h_length = EntryBytes(kHorizontalTable, panel);
  const ByteView gap = tables.subspan(v_length, kTableFieldBytes - v_length - h_length);
  if (std::ranges::any_of(gap, [](std::uint8_t byte) { return byte != 0; })) return std::nullopt;

  RegisterSet registers;
  const Bytes backward(tables.rbegin(), tables.rend());
  EntryText(registers, kVerticalTable) = HexOf(tables.first(v_length));
  EntryText(registers, kHorizontalTable) = HexOf(ByteView(backward).first(h_length));
  ByteView rest = frame.subspan(kBlockDataStart + kTableFieldBytes);
  WriteEntries(kWholeBlockEntries, rest.first(rest.size() - 1), panel, registers);
  return registers;
}

bool TablesFit(PanelSize panel) {
  return EntryBytes(kVerticalTable, panel) + EntryBytes(kHorizontalTable, panel) <=
         kTableFieldBytes;
}

}  // namespace warpline::sim
