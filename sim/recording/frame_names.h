#pragma once

#include <string>

#include "sim/line/wire.h"
#include "sim/texts/projector_texts.h"

namespace warpline::sim {

// What a frame asks for, by its header and byte 5, for people to read.
std::string FrameName(const ProjectorTexts& texts, ByteView frame);

// The bytes as upper-case hex pairs with blanks between; of a long frame the first ones and dots.
std::string FrameHex(ByteView frame, std::size_t most_bytes);

}  // namespace warpline::sim
