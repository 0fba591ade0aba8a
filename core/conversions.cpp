#include "core/conversions.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "core/fault.h"

namespace warpline {
namespace {

bool IsChecksumPair(std::string_view pair) {
  return pair == "cs" || pair == "CS";
}

}  // namespace

char HexDigit(std::uint32_t value) {
  static constexpr std::string_view kDigits = "0123456789ABCDEF";
  return kDigits[value & 15u];
}

std::string HexOf(std::span<const std::uint8_t> bytes, std::string_view between) {
  std::string text;
  text.reserve((2 + between.size()) * bytes.size());
  for (const std::uint8_t byte : bytes) {
    if (!text.empty()) text += between;
    text += HexDigit(byte >> 4);
    text += HexDigit(byte);
  }
  return text;
}

std::string HexTextMsbFirst(std::uint32_t value, int digits) {
  std::string text(8, '0');
  for (std::size_t i = 8; i-- > 0; value >>= 4) text[i] = HexDigit(value);
  return text.substr(8 - static_cast<std::size_t>(digits));
}

std::string HexTextByGroups(std::uint32_t value, int group_size, int digits) {
  const std::string text = HexTextMsbFirst(value, digits);
  const auto group = static_cast<std::size_t>(group_size);
  std::string reversed;
  for (std::size_t at = (text.size() + group - 1) / group * group; at > 0; at -= group) {
    reversed += text.substr(at - group, group);
  }
  return reversed;
}

std::string HexTextLsbFirst(std::uint32_t value, int digits) {
  return HexTextByGroups(value, 2, 8).substr(0, static_cast<std::size_t>(digits));
}

std::size_t HexTextToBytes(std::span<std::uint8_t> buffer, std::size_t start,
                           std::string_view text) {
  const std::size_t pairs = text.size() / 2;
  if (start > buffer.size() || pairs > buffer.size() - start) {
    throw Fault(FaultCode::kIndexOutOfRange);
  }
  for (std::size_t i = 0; i < pairs; ++i) {
    const std::string_view pair = text.substr(2 * i, 2);
    buffer[start + i] = IsChecksumPair(pair) ? Checksum(buffer, start + i) : HexByte(pair);
  }
  return start + pairs;
}

std::ptrdiff_t HexTextToBytesBackward(std::span<std::uint8_t> buffer, std::size_t start,
                                      std::string_view text) {
  const std::size_t pairs = text.size() / 2;
  if (pairs > 0 && (start >= buffer.size() || pairs > start + 1)) {
    throw Fault(FaultCode::kIndexOutOfRange);
  }
  for (std::size_t i = 0; i < pairs; ++i) buffer[start - i] = HexByte(text.substr(2 * i, 2));
  return static_cast<std::ptrdiff_t>(start) - static_cast<std::ptrdiff_t>(pairs);
}

std::uint8_t Checksum(std::span<const std::uint8_t> buffer, std::size_t count) {
  if (count > buffer.size()) throw Fault(FaultCode::kIndexOutOfRange);
  unsigned sum = 0;
  for (const std::uint8_t byte : buffer.first(count)) sum += byte;
  return static_cast<std::uint8_t>(sum & 0xFFu);
}

int HexDigitValue(char c) {
  if (!IsHexDigit(c)) throw Fault(FaultCode::kNotANumber);
  return IsDigit(c) ? c - '0' : (c | 0x20) - 'a' + 10;
}

std::uint8_t HexByte(std::string_view pair) {
  return static_cast<std::uint8_t>(HexDigitValue(pair[0]) * 16 + HexDigitValue(pair[1]));
}

std::string CleanIntegerText(std::string_view text, std::string_view fallback,
                             std::size_t max_length) {
  std::string cleaned;
  for (const char c : text) {
    if (IsDigit(c) || (c == '-' && cleaned.empty())) cleaned += c;
  }
  if (cleaned.empty() || cleaned == "-") cleaned = fallback;
  if (max_length > 0 && cleaned.size() > max_length) cleaned.resize(max_length);
  return cleaned;
}

bool IsIntegerText(std::string_view text) {
  return std::all_of(text.begin(), text.end(), IsIntegerCharacter);
}

std::int64_t IntegerOf(std::string_view cleaned_text) {
  std::int64_t value = 0;
  const auto result =
      std::from_chars(cleaned_text.data(), cleaned_text.data() + cleaned_text.size(), value);
  if (result.ec == std::errc::result_out_of_range) throw Fault(FaultCode::kDoesNotFit);
  if (result.ec != std::errc()) throw Fault(FaultCode::kNotANumber);
  return value;
}

std::string AddressText(std::span<const std::uint8_t, 4> address) {
  std::string text;
  for (const std::uint8_t part : address) {
    if (!text.empty()) text += '.';
    text += std::to_string(part);
  }
  return text;
}

std::optional<IPv4Address> AddressOf(std::string_view text) {
  IPv4Address address{};
  for (std::size_t i = 0; i < address.size(); ++i) {
    const bool last = i + 1 == address.size();
    const std::size_t end = last ? text.size() : text.find('.');
    if (end == std::string_view::npos) return std::nullopt;
    const auto part = WholeNumber<int>(text.substr(0, end), 0, 255);
    if (!part) return std::nullopt;
    address[i] = static_cast<std::uint8_t>(*part);
    if (!last) text.remove_prefix(end + 1);
  }
  return address;
}

std::string Base64Of(std::string_view bytes) {
  constexpr std::string_view kDigits =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string text;
  for (; !bytes.empty(); bytes.remove_prefix(std::min<std::size_t>(bytes.size(), 3))) {
    const std::size_t count = std::min<std::size_t>(bytes.size(), 3);
    std::uint32_t group = 0;
    for (std::size_t i = 0; i < 3; ++i) {
      group = group << 8 | (i < count ? static_cast<std::uint8_t>(bytes[i]) : 0U);
    }
    for (std::size_t i = 0; i < 4; ++i) {
      text.push_back(i <= count ? kDigits[group >> (18 - 6 * i) & 0x3f] : '=');
    }
  }
  return text;
}

bool IsDigit(char c) {
  return '0' <= c && c <= '9';
}
bool IsHexDigit(char c) {
  return IsDigit(c) || ('A' <= c && c <= 'F') || ('a' <= c && c <= 'f');
}
bool IsIntegerCharacter(char c) {
  return IsDigit(c) || c == '-';
}
bool IsWhiteSpace(char c) {
  return c == ' ' || c == '\t';
}

std::string WithoutBlanks(std::string_view text) {
  std::string result(text);
  std::erase(result, ' ');
  return result;
}

bool ReadReal(std::string_view text, double least, double most, double& number) {
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  return error == std::errc() && stop == end && least <= number && number <= most;
}

std::string_view TakeUpTo(std::string_view& text, char separator) {
  const std::size_t end = std::min(text.find(separator), text.size());
  const std::string_view part = text.substr(0, end);
  text.remove_prefix(std::min(end + 1, text.size()));
  return part;
}

std::string InLowerCase(std::string text) {
  for (char& c : text) {
    if ('A' <= c && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return text;
}

std::string OneLine(std::string text) {
  std::replace_if(
      text.begin(), text.end(), [](char c) { return c == '\n' || c == '\r' || c == '\t'; }, ' ');
  return text;
}

std::string ShortestText(double value) {
  std::array<char, 32> buffer{};
  const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
  return {buffer.data(), result.ptr};
}

}  // namespace warpline
