#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/register_set.h"
#include "model/profile.h"

// From a profile to the projector's registers and back.

namespace warpline {

inline constexpr std::int32_t kUnitScale = 32768;  // the scale of a line that keeps its full length

// The nine texts of one axis, L = line_length pixels, n = line_count lines. Throws what the profile
// throws, and Fault(kDoesNotFit) when an intermediate leaves its 16 or 32 bits.
AxisRegisters BuildAxisRegisters(const AxisCorrection& axis, int line_length, int line_count);

// The same from the profile on (2..2049 line sizes in pixels, each at least 1).
AxisRegisters EncodeAxisRegisters(const AxisParameters& parameters, std::span<const double> profile,
                                  int line_length);

// Both axes for a panel.
RegisterSet BuildRegisters(const CorrectionData& correction, PanelSize panel);

// The panel-extension register: how much wider than L the lines become when the optical centre lies
// outside -32..32, in 1/32768 of L. Intermediates are 16-bit integers.
std::int32_t PanelExtension(const AxisParameters& parameters, std::span<const double> profile,
                            int line_length);

// Line scales q[i] = L * 32768 / p[i], nearest integer, halves to even.
std::vector<std::int32_t> LineScales(std::span<const double> profile, int line_length);

// The corre_2 table of line scales (2..2049 of them): one signed 4-bit second difference a line
// from line 2 on. One that does not fit is held to -8..7, and the next line's is taken from the
// held one.
std::string SecondDifferenceTable(std::span<const std::int32_t> scales);

// The line scales as the projector rebuilds them: q[0] = corre_0 (unsigned), delta[1] = corre_1
// (signed), delta[i] = delta[i-1] + s[i] with s the signed 4-bit digits, q[i] = q[i-1] + delta[i].
// A last line without a digit (odd n) keeps the delta of the line before. Throws Fault(kNotANumber)
// for a text that is not hexadecimal or too short.
std::vector<std::int32_t> RebuildLineScales(const AxisRegisters& registers, int line_count);

// The value of a register text of 2 or 4 digits (low byte first), as an unsigned number or in two's
// complement. Throws Fault(kNotANumber) when it is no such text.
std::int32_t UnsignedRegisterValue(std::string_view text);
std::int32_t SignedRegisterValue(std::string_view text);

}  // namespace warpline
