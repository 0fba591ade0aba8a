#pragma once

#include <charconv>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "platform/network.h"

// Between numbers, addresses, hexadecimal digit texts and byte buffers. Which of the hex texts a
// caller picks decides the byte order of a field on the wire.

namespace warpline {

// The upper-case hex digit of the value's low four bits.
char HexDigit(std::uint32_t value);

// The bytes as pairs of upper-case hex digits, with a text between two pairs.
std::string HexOf(std::span<const std::uint8_t> bytes, std::string_view between = {});

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

// The value of one hex digit, and of a pair of them. Throw Fault(kNotANumber) when they are none.
int HexDigitValue(char c);
std::uint8_t HexByte(std::string_view pair);

// Keeps the digits and a leading "-"; the fallback when nothing else than a sign is left; at most
// max_length characters from the left (0: no limit).
std::string CleanIntegerText(std::string_view text, std::string_view fallback,
                             std::size_t max_length = 0);

// True when every character is a digit or "-"; an empty text passes.
bool IsIntegerText(std::string_view text);

// The value of a cleaned integer text. Throws Fault(kDoesNotFit) when 64 bits cannot hold it.
std::int64_t IntegerOf(std::string_view cleaned_text);

// The number from least (0 or more) to most, both included, that the whole text is: decimal digits
// and nothing around them. Nothing for any other text.
template <std::integral Number>
std::optional<Number> WholeNumber(std::string_view text, Number least, Number most) {
  Number value = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  const bool whole = error == std::errc() && stop == end && !text.starts_with('-');
  return whole && least <= value && value <= most ? std::optional(value) : std::nullopt;
}

// Reads the real number from least to most, both included, that the whole text is. False, and the
// number is anything, when it is none.
bool ReadReal(std::string_view text, double least, double most, double& number);

// Takes the text up to the separator, or all of it, off the text, the separator with it.
std::string_view TakeUpTo(std::string_view& text, char separator);

// An address as four decimal numbers with dots between. Reading takes 0 to 255 each, with any
// leading zeros, and gives nothing for another text.
std::string AddressText(std::span<const std::uint8_t, 4> address);
std::optional<IPv4Address> AddressOf(std::string_view text);

// The bytes in Base64 with its padding, on one line.
std::string Base64Of(std::string_view bytes);

// The text with "a" to "z" for "A" to "Z".
std::string InLowerCase(std::string text);

// The text on one line: a blank for each end of a line and tab.
std::string OneLine(std::string text);

// Single characters, as the entry fields of the dialogs ask for them.
bool IsDigit(char c);  // "0" to "9"
bool IsHexDigit(char c);
bool IsIntegerCharacter(char c);  // a digit or "-"
bool IsWhiteSpace(char c);        // a blank or a tab

// The text without any blank (" ").
std::string WithoutBlanks(std::string_view text);

// Shortest decimal text that reads back to the same double.
std::string ShortestText(double value);

}  // namespace warpline
