#include "model/registers.h"

#include <algorithm>
#include <limits>

#include "core/conversions.h"
#include "core/fault.h"

namespace warpline {
namespace {

constexpr std::int32_t kLowestSecondDifference = -8;
constexpr std::int32_t kHighestSecondDifference = 7;

using Short = std::int16_t;

std::string ByteText(std::int32_t value) {
  return HexTextLsbFirst(static_cast<std::uint32_t>(value), 2);
}

std::string WordText(std::int32_t value) {
  return HexTextLsbFirst(static_cast<std::uint32_t>(value), 4);
}

char LowDigit(std::int32_t value) {
  return HexDigit(static_cast<std::uint32_t>(value));
}

std::int32_t SignExtend(std::int32_t value, int bits) {
  const std::int32_t half = 1 << (bits - 1);
  return value >= half ? value - 2 * half : value;
}

// The second difference of line i (from 2 on) out of the packed table.
std::int32_t SecondDifference(std::string_view table, std::size_t line) {
  const std::size_t at = line % 2 == 0 ? line - 1 : line - 3;
  if (at >= table.size()) throw Fault(FaultCode::kNotANumber);
  return SignExtend(HexDigitValue(table[at]), 4);
}

}  // namespace

std::vector<std::int32_t> LineScales(std::span<const double> profile, int line_length) {
  std::vector<std::int32_t> scales(profile.size());
  std::transform(profile.begin(), profile.end(), scales.begin(), [line_length](double size) {
    return RoundTo<std::int32_t>(static_cast<double>(line_length) * kUnitScale / size);
  });
  return scales;
}

std::string SecondDifferenceTable(std::span<const std::int32_t> scales) {
  std::string text;
  text.reserve(scales.size());
  std::int32_t previous = scales[0] - scales[1];
  char even_digit = '0';
  for (std::size_t i = 2; i < scales.size(); ++i) {
    std::int32_t difference = scales[i - 1] - scales[i];
    const std::int32_t second =
        std::clamp(previous - difference, kLowestSecondDifference, kHighestSecondDifference);
    difference = previous - second;
    previous = difference;
    if (i % 2 == 0) {
      even_digit = LowDigit(second);
    } else {
      text += LowDigit(second);
      text += even_digit;
    }
  }
  return text;
}

std::int32_t PanelExtension(const AxisParameters& parameters, std::span<const double> profile,
                            int line_length) {
  if (parameters.Optical >= -32 && parameters.Optical <= 32) return 0;
  const double k = static_cast<double>(parameters.Optical) / 32;
  // Rounding keeps the order, so the outermost edges alone are rounded; the innermost ones must fit
  // their registers, too.
  double outer_high = -std::numeric_limits<double>::infinity(), outer_low = outer_high;
  double inner_high = std::numeric_limits<double>::infinity(), inner_low = inner_high;
  for (const double size : profile) {
    const double a = (size - line_length) * k;
    outer_high = std::max(outer_high, a + size);
    inner_high = std::min(inner_high, a + size);
    outer_low = std::max(outer_low, size - a);
    inner_low = std::min(inner_low, size - a);
  }
  RoundTo<Short>(inner_high);
  RoundTo<Short>(inner_low);
  const auto high =
      std::max(Short{0}, RoundTo<Short>(static_cast<double>(RoundTo<Short>(outer_high)) / 2));
  const auto low = std::min(NarrowTo<Short>(line_length),
                            RoundTo<Short>(-(static_cast<double>(RoundTo<Short>(outer_low)) / 2)));
  const auto width = NarrowTo<Short>(NarrowTo<Short>(high - low) - line_length);
  if (width < 0) return 0;
  return RoundTo<std::int32_t>(static_cast<double>(width) * kUnitScale / line_length);
}

AxisRegisters EncodeAxisRegisters(const AxisParameters& parameters, std::span<const double> profile,
                                  int line_length) {
  const std::vector<std::int32_t> q = LineScales(profile, line_length);
  AxisRegisters registers;
  registers[kPanelExt] = WordText(PanelExtension(parameters, profile, line_length));
  registers[kScroll] = WordText(parameters.Position);
  registers[kOptCenter] = ByteText(parameters.Optical);
  registers[kLinearity] = ByteText(parameters.Linearity);
  registers[kCompDisp] = "00";
  registers[kStadium] = ByteText(parameters.Stadium);
  registers[kCorre0] = WordText(q[0]);
  registers[kCorre1] = ByteText(q[1] - q[0]);
  registers[kCorre2] = SecondDifferenceTable(q);
  return registers;
}

AxisRegisters BuildAxisRegisters(const AxisCorrection& axis, int line_length, int line_count) {
  const std::vector<double> samples = SampleCurve(axis.Curve, line_count);
  return EncodeAxisRegisters(
      axis.Parameters, LineSizeProfile(axis.Parameters, axis.Projection, samples, line_length),
      line_length);
}

RegisterSet BuildRegisters(const CorrectionData& correction, PanelSize panel) {
  RegisterSet registers;
  for (const Axis axis : {kHorizontal, kVertical}) {
    registers[axis] = BuildAxisRegisters(CorrectionOf(correction, axis), LineLength(panel, axis),
                                         LineCount(panel, axis));
  }
  return registers;
}

std::int32_t UnsignedRegisterValue(std::string_view text) {
  if (text.size() != 2 && text.size() != 4) throw Fault(FaultCode::kNotANumber);
  std::int32_t value = 0;
  for (std::size_t at = text.size(); at > 0; at -= 2) {
    value = value * 256 + HexByte(text.substr(at - 2, 2));
  }
  return value;
}

std::int32_t SignedRegisterValue(std::string_view text) {
  return SignExtend(UnsignedRegisterValue(text), static_cast<int>(text.size()) * 4);
}

std::vector<std::int32_t> RebuildLineScales(const AxisRegisters& registers, int line_count) {
  if (line_count < 2 || line_count > kMaxLineCount) throw Fault(FaultCode::kIndexOutOfRange);
  std::vector<std::int32_t> scales(static_cast<std::size_t>(line_count));
  std::int32_t delta = SignedRegisterValue(registers[kCorre1]);
  scales[0] = UnsignedRegisterValue(registers[kCorre0]);
  scales[1] = scales[0] + delta;
  // A last even line has no digit of its own.
  const std::size_t coded = 2 + Corre2Digits(line_count);
  for (std::size_t i = 2; i < scales.size(); ++i) {
    if (i < coded) delta += SecondDifference(registers[kCorre2], i);
    scales[i] = scales[i - 1] + delta;
  }
  return scales;
}

}  // namespace warpline
