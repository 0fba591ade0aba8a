#pragma once

#include <charconv>
#include <concepts>
#include <optional>
#include <string_view>

namespace warpline::sim {

// The number that the whole text is, in decimal and with nothing around it, when it is one from
// least to most.
template <std::integral Number>
std::optional<Number> WholeNumber(std::string_view text, Number least, Number most) {
  Number value = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  if (error != std::errc() || stop != end || value < least || value > most) return std::nullopt;
  return value;
}

}  // namespace warpline::sim
