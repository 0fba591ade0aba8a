#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "sim/wire.h"

// Faults of the projector or the line, put in on purpose. A rule is WHEN:WHAT.
//   WHEN  nth=N       the Nth exchange since the start, counted from 1 (echoes excepted)
//         kind=NAME   every exchange of a kind: any, probe, class, running, panel, status, input,
//                     prepare (command 20), mode (18 and 19), block (the whole-block transfer), or
//                     a command number: 0..12, 14, 16..21
//   WHAT  timeout     no answer, and nothing is executed
//         refuse      answered with error byte 2, and nothing is executed
//         short       the reply lacks its last two bytes
//         long        two bytes follow the reply
//         checksum    the reply's checksum is wrong
//         late=MS     the reply comes after that many milliseconds (0..600000)
//         slow        the reply comes byte by byte
//         cut         the connection is closed instead of an answer, and nothing is executed
//         cutmid      the connection is closed in the middle of the reply

namespace warpline::sim {

enum class FaultEffect { kTimeOut, kRefuse, kShort, kLong, kChecksum, kLate, kSlow, kCut, kCutMid };

struct FaultRule {
  std::string Text;                  // as it was given
  std::optional<std::uint64_t> Nth;  // one exchange, or
  std::string Kind;                  // every exchange of a kind
  FaultEffect Effect = FaultEffect::kTimeOut;
  std::chrono::milliseconds Delay{0};  // of kLate
};

// The rule of a text; else nothing, and the reason in one sentence.
std::optional<FaultRule> ParseFaultRule(std::string_view text, std::string& reason);

// True when the frame, the exchange with that number, is one that the rule means.
bool Matches(const FaultRule& rule, std::uint64_t exchange, ByteView frame);

// What goes back over the line, and how.
struct Outgoing {
  Bytes Reply;
  std::chrono::milliseconds Delay{0};
  bool ByteByByte = false;
  bool CutAfter = false;  // the connection is closed behind the reply
};

// True when the frame is to be executed for its reply; without execution a refusal is the only
// reply.
bool IsExecuted(FaultEffect effect);

// The reply as the fault lets it out.
Outgoing Spoil(const FaultRule& rule, Bytes reply);

}  // namespace warpline::sim
