#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/texts.h"
#include "sim/line/wire.h"

// Faults of the projector or the line, put in on purpose. A rule is WHEN:WHAT. WHEN is a list of
// conditions with commas between; all must hold.
//   nth=N         the Nth exchange since the start, counted from 1 (echoes excepted)
//   kind=NAME     exchanges of a kind: any, probe, class, running, panel, status, input, prepare
//                 (command 20), mode (18 and 19), block (the whole-block transfer), or a command
//                 number: 0..12, 14, 16..21
//   every=N       every Nth of those that the conditions above mean
//   once          only the first of them; the rule is gone then
//   chance=P      each with that probability, above 0 and up to 1
//   always        all of them; for a rule without any other condition
// WHAT:
//   timeout       no answer, and nothing is executed
//   refuse        answered with error byte 2, and nothing is executed
//   unkept        answered as if it were executed, but nothing is kept
//   short         the reply lacks its last two bytes
//   long          two bytes follow the reply
//   duplicate     the reply comes twice
//   checksum      the reply's checksum is wrong
//   late=MS       the reply comes after that many milliseconds (0..600000); late=MS~JITTER: more or
//                 less by up to that many
//   slow          the reply comes byte by byte
//   cut           the connection is closed instead of an answer, and nothing is executed
//   cutmid        the connection is closed in the middle of the reply
//   restart       the projector restarts instead of an answer: it shows what it has stored, and all
//                 connections are closed
// and on connections instead of exchanges (nth counts connections, kind is not allowed):
//   refuselink    a caller is turned away: with "always" nobody listens, else the connection is
//                 closed as soon as it stands
//   halfopen      the connection stands, but what comes over it is never answered
//   single        a second caller is turned away while there is a first

namespace warpline::sim {

enum class FaultEffect {
  kTimeOut,
  kRefuse,
  kUnkept,
  kShort,
  kLong,
  kDuplicate,
  kChecksum,
  kLate,
  kSlow,
  kCut,
  kCutMid,
  kRestart,
  kRefuseLink,
  kHalfOpen,
  kSingle,
};

struct FaultRule {
  std::string Text;                  // as it was given
  std::optional<std::uint64_t> Nth;  // one exchange or connection
  std::string Kind = "any";
  std::uint64_t Every = 1;
  bool Once = false;
  double Chance = 1;
  FaultEffect Effect = FaultEffect::kTimeOut;
  std::chrono::milliseconds Delay{0};   // of kLate
  std::chrono::milliseconds Jitter{0};  // of kLate
};

// The rule of a text; else nothing, and the reason.
std::optional<FaultRule> ParseFaultRule(std::string_view text, NamedText& reason);

// True when the frame, the exchange with that number, is one that the rule's nth and kind mean.
bool Matches(const FaultRule& rule, std::uint64_t exchange, ByteView frame);

// True when the effect strikes connections and not exchanges.
bool StrikesLinks(FaultEffect effect);

// The names of WHAT in the order of the list above; that of kLate is "late".
std::vector<std::string_view> FaultNames();

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
