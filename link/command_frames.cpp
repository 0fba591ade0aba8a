#include "link/command_frames.h"

#include <algorithm>
#include <array>
#include <initializer_list>
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

// The register texts that a command carries, in order.
struct FieldList {
  constexpr FieldList(std::initializer_list<RegisterField> list) : count(list.size()) {
    std::copy(list.begin(), list.end(), fields.begin());
  }
  constexpr std::span<const RegisterField> Fields() const { return std::span(fields).first(count); }

  std::array<RegisterField, kRegisterFieldCount> fields{};
  std::size_t count;
};

struct CommandRow {
  CommandNumber number;
  std::string_view header;
  std::string_view sub_command;
  Axis axis;  // of the fields
  FieldList fields;
};

constexpr FieldList kSet{kPanelExt, kScroll, kCorre0, kCorre1, kOptCenter, kLinearity, kCorre2};
constexpr FieldList kCorrection{kCorre0, kCorre1, kCorre2};
constexpr FieldList kNothing{};

// A command without fields has no axis; the column then says nothing.
constexpr std::array kCommands{
    CommandRow{kCommandClear, kDataHeader, "0000", kHorizontal, kNothing},
    CommandRow{kCommandShow, kDataHeader, "0100", kHorizontal, kNothing},
    CommandRow{kCommandHorizontalSet, kDataHeader, "0200", kHorizontal, kSet},
    CommandRow{kCommandVerticalSet, kDataHeader, "0300", kVertical, kSet},
    CommandRow{kCommandHorizontalCorrection, kDataHeader, "0400", kHorizontal, kCorrection},
    CommandRow{kCommandVerticalCorrection, kDataHeader, "0500", kVertical, kCorrection},
    CommandRow{kCommandHorizontalPanelExt, kDataHeader, "0600", kHorizontal, {kPanelExt}},
    CommandRow{kCommandVerticalPanelExt, kDataHeader, "0700", kVertical, {kPanelExt}},
    CommandRow{kCommandHorizontalScroll, kDataHeader, "0800", kHorizontal, {kScroll}},
    CommandRow{kCommandVerticalScroll, kDataHeader, "0900", kVertical, {kScroll}},
    CommandRow{kCommandHorizontalOptCenter, kDataHeader, "0A00", kHorizontal, {kOptCenter}},
    CommandRow{kCommandVerticalOptCenter, kDataHeader, "0B00", kVertical, {kOptCenter}},
    CommandRow{kCommandHorizontalLinearity, kDataHeader, "0C00", kHorizontal, {kLinearity}},
    CommandRow{kCommandHorizontalCompDisp, kDataHeader, "0E00", kHorizontal, {kCompDisp}},
    CommandRow{kCommandHorizontalStadium, kDataHeader, "1000", kHorizontal, {kStadium}},
    CommandRow{kCommandVerticalStadium, kDataHeader, "1100", kVertical, {kStadium}},
    CommandRow{kCommandSetMode, kModeHeader, "mm00", kHorizontal, kNothing},
    CommandRow{kCommandQueryMode, kModeHeader, "0100", kHorizontal, kNothing},
    CommandRow{kCommandStore, kDataHeader, "1200", kHorizontal, kNothing},
};

// Layout of the whole block.
constexpr std::size_t kWholeBlockClearedBytes = 1792;
constexpr std::size_t kWholeBlockCountStart = 3;
constexpr std::size_t kWholeBlockAddressStart = 5;
constexpr std::size_t kWholeBlockLengthStart = 9;
constexpr std::string_view kWholeBlockHeader = "01FC000000";
// The short fields behind the tables, each for the horizontal and then the vertical axis.
constexpr std::array kWholeBlockFields{kPanelExt,  kScroll,    kCorre0,   kCorre1,
                                       kOptCenter, kLinearity, kCompDisp, kStadium};
constexpr std::uint32_t kLowAddress = 0x45000;
constexpr std::uint32_t kHighAddress = 0x46000;

std::string_view FieldText(const RegisterSet& registers, Axis axis, RegisterField field) {
  const std::string& text = registers[axis][field];
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
std::uint32_t WholeBlockAddress(ModelAnswer model) {
  const bool low =
      model.model_class == kWholeBlockClass || model.reply5 == 11 || model.reply5 == 13;
  return low ? kLowAddress : kHighAddress;
}

void WriteWholeBlockTables(const RegisterSet& registers, std::span<std::uint8_t> buffer) {
  const std::size_t last = kWholeBlockTableStart + kWholeBlockTableBytes - 1;
  HexTextToBytes(buffer, kWholeBlockTableStart, FieldText(registers, kVertical, kCorre2));
  HexTextToBytesBackward(buffer, last, FieldText(registers, kHorizontal, kCorre2));
}

std::optional<Frame> ComposeWholeBlock(const RegisterSet& registers, ModelAnswer model) {
  const std::size_t table_digits = FieldText(registers, kVertical, kCorre2).size() +
                                   FieldText(registers, kHorizontal, kCorre2).size();
  if (table_digits > 2 * std::size_t{kWholeBlockTableBytes}) return std::nullopt;

  Frame frame(kWholeBlockClearedBytes, 0);
  HexTextToBytes(frame, 0, kWholeBlockHeader);
  HexTextToBytes(frame, kWholeBlockAddressStart, HexTextLsbFirst(WholeBlockAddress(model), 8));
  WriteWholeBlockTables(registers, frame);
  std::size_t end = kWholeBlockTableStart + kWholeBlockTableBytes;
  for (const RegisterField field : kWholeBlockFields) {
    for (const Axis axis : {kHorizontal, kVertical}) {
      end = HexTextToBytes(frame, end, FieldText(registers, axis, field));
    }
  }
  const auto count = static_cast<std::uint32_t>(end - kWholeBlockAddressStart);
  const auto length = static_cast<std::uint32_t>(end - kWholeBlockTableStart);
  HexTextToBytes(frame, kWholeBlockCountStart, HexTextMsbFirst(count, 4));
  HexTextToBytes(frame, kWholeBlockLengthStart, HexTextLsbFirst(length, 4));
  frame.resize(HexTextToBytes(frame, end, "cs"));
  return frame;
}

}  // namespace

std::optional<std::string> ComposeCommandText(int number, const RegisterSet& registers,
                                              std::int16_t mode) {
  if (number == kCommandPrepare) return std::string(kPrepareText);
  const auto row = std::find_if(kCommands.begin(), kCommands.end(),
                                [number](const CommandRow& each) { return each.number == number; });
  if (row == kCommands.end()) return std::nullopt;

  std::string body = SubCommandText(*row, mode);
  if (row->fields.count > 0) {
    std::string data;
    for (const RegisterField field : row->fields.Fields()) {
      data += FieldText(registers, row->axis, field);
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

std::optional<StoreFrame> ComposeStore(const RegisterSet& registers, ModelAnswer model) {
  if (model.model_class < kWholeBlockClass) return std::nullopt;
  if (model.model_class >= kStoreCommandClass) {
    return StoreFrame{FrameOf(*ComposeCommandText(kCommandStore, registers, 0)), false};
  }
  const auto block = ComposeWholeBlock(registers, model);
  return block ? std::optional(StoreFrame{*block, true}) : std::nullopt;
}

}  // namespace warpline
