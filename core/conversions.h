#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

// Between numbers, hexadecimal digit texts and byte buffers. Which of the hex texts a caller picks
// decides the byte order of a field on the wire.

namespace warpline {

// n hex digits (2, 4 or 8; upper case) of the value's bytes in ascending significance.
std::string HexTextLsbFirst(std::uint32_t value, int digits);

// The last n (1..8) digits of the value written as 8 zero-padded upper-case hex digits.
std::string HexTextMsbFirst(std::uint32_t value, int digits);

// The right n (1..8) digits of the 8-digit text, cut into groups of group_size digits, the groups
// in reverse order: with group_size 2 a little-endian field of n / 2 bytes.
std::string HexTextByGroups(std::uint32_t value, int group_size, int digits);

// Writes one byte per digit pair from index start on and returns the index behind the last byte
// written. The pair "cs" or "CS" stands for the checksum of all bytes before it. Throws
// Fault(kNotANumber) for a pair that is no hex byte and Fault(kIndexOutOfRange) when the buffer is
// too short.
std::size_t HexTextToBytes(std::span<std::uint8_t> buffer, std::size_t start,
                           std::string_view text);

// Writes pair i at index start - i and returns start minus the number of pairs (as a signed index:
// -1 is reached when the last pair lands on index 0). Faults as above; there is no checksum pair.
std::ptrdiff_t HexTextToBytesBackward(std::span<std::uint8_t> buffer, std::size_t start,
                                      std::string_view text);

// The low byte of the sum of the first count bytes. Throws Fault(kIndexOutOfRange) when there are
// fewer.
std::uint8_t Checksum(std::span<const std::uint8_t> buffer, std::size_t count);

// The value of one hex digit, -1 when the character is none.
int HexDigitValue(char c);

// Keeps the digits and a leading "-"; the fallback when nothing else than a sign is left; at most
// max_length characters from the left (0: no limit).
std::string CleanIntegerText(std::string_view text, std::string_view fallback,
                             std::size_t max_length = 0);

// True when every character is a digit or "-"; an empty text passes.
bool IsIntegerText(std::string_view text);

// The value of a cleaned integer text. Throws Fault(kDoesNotFit) when 64 bits cannot hold it.
std::int64_t IntegerOf(std::string_view cleaned_text);

// Single characters, as the entry fields of the dialogs ask for them.
bool IsHexDigit(char c);
bool IsIntegerCharacter(char c);  // "0" to "9" and "-"
bool IsDecimalPoint(char c);
bool IsWhiteSpace(char c);  // a blank or a tab

// The text without any blank (" ").
std::string WithoutBlanks(std::string_view text);

// Shortest decimal text that reads back to the same double.
std::string ShortestText(double value);

}  // namespace warpline
