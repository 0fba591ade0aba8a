#include "link/command_frames.h"

#include <algorithm>
#include <span>

#include "core/conversions.h"
#include "core/fault.h"

namespace warpline {
namespace {

constexpr std::string_view kDataHeader = "01DF00";
constexpr std::string_view kModeHeader = "01DE00";

// The frame of kCommandPrepare, which follows no pattern.
constexpr std::string_view kPrepareText = "021A0000020201cs";

// Stands in a sub-command for the value byte of kCommandSetMode.
constexpr std::string_view kModeMark = "mm";

struct CommandRow {
  int number;
  std::string_view header;
  std::string_view sub_command;
  std::size_t entry_count;
  std::array<std::uint8_t, 7> entries;  // register texts, 0-8 horizontal and 9-17 vertical
};

constexpr std::array<CommandRow, 19> kCommands{{
    {0, kDataHeader, "0000", 0, {}},
    {1, kDataHeader, "0100", 0, {}},
    {2, kDataHeader, "0200", 7, {0, 1, 6, 7, 2, 3, 8}},
    {3, kDataHeader, "0300", 7, {9, 10, 15, 16, 11, 12, 17}},
    {4, kDataHeader, "0400", 3, {6, 7, 8}},
    {5, kDataHeader, "0500", 3, {15, 16, 17}},
    {6, kDataHeader, "0600", 1, {0}},
    {7, kDataHeader, "0700", 1, {9}},
    {8, kDataHeader, "0800", 1, {1}},
    {9, kDataHeader, "0900", 1, {10}},
    {10, kDataHeader, "0A00", 1, {2}},
    {11, kDataHeader, "0B00", 1, {11}},
    {12, kDataHeader, "0C00", 1, {3}},
    {14, kDataHeader, "0E00", 1, {4}},
    {16, kDataHeader, "1000", 1, {5}},
    {17, kDataHeader, "1100", 1, {14}},
    {18, kModeHeader, "mm00", 0, {}},
    {19, kModeHeader, "0100", 0, {}},
    {21, kDataHeader, "1200", 0, {}},
}};

// Layout of the whole block.
constexpr std::size_t kWholeBlockClearedBytes = 1792;
constexpr std::size_t kWholeBlockCountStart = 3;
constexpr std::size_t kWholeBlockAddressStart = 5;
constexpr std::size_t kWholeBlockLengthStart = 9;
constexpr std::string_view kWholeBlockHeader = "01FC000000";
constexpr std::size_t kHorizontalTable = 8;
constexpr std::size_t kVerticalTable = 17;
constexpr std::array<std::size_t, 16> kWholeBlockFields{0, 9,  1, 10, 6, 15, 7, 16,
                                                        2, 11, 3, 12, 4, 13, 5, 14};
constexpr std::uint32_t kLowAddress = 0x45000;
constexpr std::uint32_t kHighAddress = 0x46000;

std::string_view EntryText(const RegisterSet& registers, std::size_t entry) {
  const std::size_t field = entry % kRegisterFieldCount;
  const std::string& text = registers.at(entry / kRegisterFieldCount)[field];
  return field == kCompDisp && text.empty() ? std::string_view("00") : text;
}

std::string SubCommandText(const CommandRow& row, std::int16_t mode) {
  std::string text(row.sub_command);
  const std::size_t mark = text.find(kModeMark);
  if (mark != std::string::npos) {
    text.replace(mark, kModeMark.size(), HexTextMsbFirst(static_cast<std::uint32_t>(mode), 2));
  }
  return text;
}

std::uint16_t PairCount(std::string_view text) {
  return NarrowTo<std::uint16_t>(static_cast<std::int64_t>(text.size() / 2));
}

// Projectors of class 4 exist with both memory layouts and tell which one is theirs.
std::uint32_t WholeBlockAddress(int model_class, int reply5) {
  const bool low = model_class == kWholeBlockClass || reply5 == 11 || reply5 == 13;
  return low ? kLowAddress : kHighAddress;
}

void WriteWholeBlockTables(const RegisterSet& registers, std::span<std::uint8_t> buffer) {
  const std::size_t last = kWholeBlockTableStart + kWholeBlockTableBytes - 1;
  HexTextToBytes(buffer, kWholeBlockTableStart, EntryText(registers, kVerticalTable));
  HexTextToBytesBackward(buffer, last, EntryText(registers, kHorizontalTable));
}

}  // namespace

std::optional<std::string> ComposeCommandText(int number, const RegisterSet& registers,
                                              std::int16_t mode) {
  if (number == kCommandPrepare) return std::string(kPrepareText);
  const auto row = std::find_if(kCommands.begin(), kCommands.end(),
                                [number](const CommandRow& each) { return each.number == number; });
  if (row == kCommands.end()) return std::nullopt;

  std::string body = SubCommandText(*row, mode);
  if (row->entry_count > 0) {
    std::string data;
    for (const std::uint8_t entry : std::span(row->entries).first(row->entry_count)) {
      data += EntryText(registers, entry);
    }
    body += HexTextLsbFirst(PairCount(data), 4) + data;
  }
  return std::string(row->header) + HexTextMsbFirst(PairCount(body), 4) + body + "cs";
}

Frame FrameOf(std::string_view text) {
  Frame frame(text.size() / 2);
  HexTextToBytes(frame, 0, text);
  return frame;
}

std::optional<Frame> ComposeWholeBlock(const RegisterSet& registers, int model_class, int reply5) {
  const std::size_t table_digits =
      EntryText(registers, kVerticalTable).size() + EntryText(registers, kHorizontalTable).size();
  if (table_digits > 2 * std::size_t{kWholeBlockTableBytes}) return std::nullopt;

  Frame frame(kWholeBlockClearedBytes, 0);
  HexTextToBytes(frame, 0, kWholeBlockHeader);
  HexTextToBytes(frame, kWholeBlockAddressStart,
                 HexTextLsbFirst(WholeBlockAddress(model_class, reply5), 8));
  WriteWholeBlockTables(registers, frame);
  std::size_t end = kWholeBlockTableStart + kWholeBlockTableBytes;
  for (const std::size_t entry : kWholeBlockFields) {
    end = HexTextToBytes(frame, end, EntryText(registers, entry));
  }
  const auto count = static_cast<std::uint32_t>(end - kWholeBlockAddressStart);
  const auto length = static_cast<std::uint32_t>(end - kWholeBlockTableStart);
  HexTextToBytes(frame, kWholeBlockCountStart, HexTextMsbFirst(count, 4));
  HexTextToBytes(frame, kWholeBlockLengthStart, HexTextLsbFirst(length, 4));
  frame.resize(HexTextToBytes(frame, end, "cs"));
  return frame;
}

std::string HexOf(const Frame& frame) {
  std::string text;
  text.reserve(2 * frame.size());
  for (const std::uint8_t byte : frame) text += HexTextMsbFirst(byte, 2);
  return text;
}

}  // namespace warpline
