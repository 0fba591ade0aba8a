#include "link/frame_name.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "core/conversions.h"

namespace warpline {
namespace {

struct NameRow {
  std::string_view start;  // of the frame, in hex; "." stands for any digit
  std::string_view name;
};

constexpr std::string_view kRegisters = "Registers";
constexpr std::size_t kSubCommandByte = 5;

// The first row that fits counts.
constexpr std::array<NameRow, 8> kNames{{
    {"01DF000000", "Probe"},
    {"01DF00....00", "Clear (0)"},
    {"01DF00....01", "Show (1)"},
    {"01DF00....12", "Store (21)"},
    {"01DE00", "Mode (18, 19)"},
    {"021A00", "Prepare (20)"},
    {"008500", "Model class?"},
    {"01FC00", "Whole block (21)"},
}};

bool Fits(std::string_view frame, std::string_view start) {
  return frame.size() >= start.size() &&
         std::equal(start.begin(), start.end(), frame.begin(),
                    [](char wanted, char digit) { return wanted == '.' || wanted == digit; });
}

}  // namespace

std::string FrameName(std::span<const std::uint8_t> frame) {
  const std::string hex = HexOf(frame.first(std::min(frame.size(), kSubCommandByte + 1)));
  const auto row = std::find_if(kNames.begin(), kNames.end(),
                                [&hex](const NameRow& each) { return Fits(hex, each.start); });
  if (row != kNames.end()) return std::string(row->name);
  if (!Fits(hex, "01DF00......")) return "Unknown";
  return std::string(kRegisters) + " (" + std::to_string(frame[kSubCommandByte]) + ")";
}

}  // namespace warpline
