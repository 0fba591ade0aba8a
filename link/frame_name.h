#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace warpline {

// What a raw command asks for, in the words that the simulated projector's recordings use too.
std::string FrameName(std::span<const std::uint8_t> frame);

}  // namespace warpline
