#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "sim/line/wire.h"

// Calls of the control library, as the tool records them, seen from the other end of the line.

namespace warpline::sim {

struct RecordedCall {
  std::string_view Name;  // of the entry point
  std::int32_t Result = 0;
  std::string_view Details;  // "key=value" with blanks between
};

// What the stand-in library would have sent for the call, and what must be answered so that it
// comes to the same result.
struct CallExchange {
  Bytes Request;
  Bytes Reply;  // empty: there was none
};

// Nothing for a call that sends nothing of its own, or that lacks a detail.
std::optional<CallExchange> ExchangeOf(const RecordedCall& call);

// What a raw command got in the end: the reply, nothing when it was not answered, and for every
// other failure a reply that nobody can read.
Bytes ReplyFor(std::int32_t result, ByteView request, Bytes reply);

}  // namespace warpline::sim
