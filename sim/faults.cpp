#include "sim/faults.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

namespace warpline::sim {
namespace {

constexpr int kAnyByte = -1;
constexpr std::uint64_t kMaxNth = 1'000'000'000;
constexpr std::uint64_t kMaxDelayMs = 600'000;

// A kind of exchange: the header, and byte 5 where it decides. The probe is the one frame of its
// header without any byte there.
struct KindRow {
  std::string_view name;
  FrameHeader header;
  int byte5;
};

constexpr std::array kKinds{
    KindRow{"class", kModelClassHeader, kAnyByte},
    KindRow{"running", kLibraryHeader, kRunningOperation},
    KindRow{"panel", kLibraryHeader, kPanelOperation},
    KindRow{"status", kLibraryHeader, kStatusOperation},
    KindRow{"input", kLibraryHeader, kInputOperation},
    KindRow{"prepare", kPrepareHeader, kAnyByte},
    KindRow{"20", kPrepareHeader, kAnyByte},
    KindRow{"mode", kModeHeader, kAnyByte},
    KindRow{"18", kModeHeader, kAnyByte},
    KindRow{"19", kModeHeader, 1},
    KindRow{"block", kWholeBlockHeader, kAnyByte},
    KindRow{"21", kWholeBlockHeader, kAnyByte},
    KindRow{"21", kDataHeader, 0x12},
};

struct EffectRow {
  std::string_view name;
  FaultEffect effect;
};

constexpr std::array kEffects{
    EffectRow{"timeout", FaultEffect::kTimeOut},   EffectRow{"refuse", FaultEffect::kRefuse},
    EffectRow{"short", FaultEffect::kShort},       EffectRow{"long", FaultEffect::kLong},
    EffectRow{"checksum", FaultEffect::kChecksum}, EffectRow{"slow", FaultEffect::kSlow},
    EffectRow{"cut", FaultEffect::kCut},           EffectRow{"cutmid", FaultEffect::kCutMid},
};

std::optional<std::uint64_t> Number(std::string_view text) {
  std::uint64_t value = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  if (error != std::errc() || stop != end) return std::nullopt;
  return value;
}

// Removes the prefix; false when the text does not begin with it.
bool Take(std::string_view& text, std::string_view prefix) {
  if (!text.starts_with(prefix)) return false;
  text.remove_prefix(prefix.size());
  return true;
}

bool IsPlainCommand(std::uint64_t number) {
  return number <= 12 || number == 14 || number == 16 || number == 17;
}

bool IsKind(std::string_view name) {
  if (name == "any" || name == "probe") return true;
  if (std::ranges::find(kKinds, name, &KindRow::name) != kKinds.end()) return true;
  const std::optional<std::uint64_t> number = Number(name);
  return number && IsPlainCommand(*number);
}

bool ParseWhen(std::string_view text, FaultRule& rule, std::string& reason) {
  if (Take(text, "nth=")) {
    rule.Nth = Number(text);
    if (rule.Nth && *rule.Nth >= 1 && *rule.Nth <= kMaxNth) return true;
    reason = "nth= needs a number from 1 on";
    return false;
  }
  if (Take(text, "kind=")) {
    rule.Kind = text;
    if (IsKind(text)) return true;
    reason =
        "kind= needs any, probe, class, running, panel, status, input, prepare, mode, block or a "
        "command number (0 to 12, 14, 16 to 21)";
    return false;
  }
  reason = "it must begin with nth=N: or kind=NAME:";
  return false;
}

bool ParseWhat(std::string_view text, FaultRule& rule, std::string& reason) {
  if (Take(text, "late=")) {
    const std::optional<std::uint64_t> delay = Number(text);
    rule.Effect = FaultEffect::kLate;
    rule.Delay = std::chrono::milliseconds(delay.value_or(0));
    if (delay && *delay <= kMaxDelayMs) return true;
    reason = "late= needs milliseconds from 0 to 600000";
    return false;
  }
  const auto* row = std::ranges::find(kEffects, text, &EffectRow::name);
  if (row == kEffects.end()) {
    reason =
        "the fault must be timeout, refuse, short, long, checksum, late=MS, slow, cut or cutmid";
    return false;
  }
  rule.Effect = row->effect;
  return true;
}

bool IsOfKind(std::string_view kind, ByteView frame) {
  if (kind == "any") return true;
  const bool has_byte5 = frame.size() > kPayloadStart + 1;
  if (kind == "probe") return HasHeader(frame, kDataHeader) && !has_byte5;
  const int byte5 = has_byte5 ? frame[kPayloadStart] : kAnyByte;
  const bool in_table = std::ranges::any_of(kKinds, [&](const KindRow& row) {
    return row.name == kind && HasHeader(frame, row.header) &&
           (row.byte5 == kAnyByte || row.byte5 == byte5);
  });
  if (in_table) return true;
  const std::optional<std::uint64_t> number = Number(kind);
  return number && IsPlainCommand(*number) && HasHeader(frame, kDataHeader) &&
         byte5 == static_cast<int>(*number);
}

}  // namespace

std::optional<FaultRule> ParseFaultRule(std::string_view text, std::string& reason) {
  FaultRule rule;
  rule.Text = text;
  const std::size_t colon = text.find(':');
  const bool parsed = ParseWhen(text.substr(0, colon), rule, reason);
  const std::string_view what =
      colon == std::string_view::npos ? std::string_view() : text.substr(colon + 1);
  if (parsed && ParseWhat(what, rule, reason)) return rule;
  reason = "The fault rule \"" + rule.Text + "\" is wrong: " + reason + ".";
  return std::nullopt;
}

bool Matches(const FaultRule& rule, std::uint64_t exchange, ByteView frame) {
  if (rule.Nth) return *rule.Nth == exchange;
  return IsOfKind(rule.Kind, frame);
}

bool IsExecuted(FaultEffect effect) {
  return effect != FaultEffect::kTimeOut && effect != FaultEffect::kRefuse &&
         effect != FaultEffect::kCut;
}

Outgoing Spoil(const FaultRule& rule, Bytes reply) {
  Outgoing outgoing;
  if (rule.Effect == FaultEffect::kTimeOut || rule.Effect == FaultEffect::kCut) reply.clear();
  if (rule.Effect == FaultEffect::kShort)
    reply.resize(reply.size() - std::min<std::size_t>(2, reply.size()));
  if (rule.Effect == FaultEffect::kLong) reply.insert(reply.end(), {0x00, 0xFF});
  if (rule.Effect == FaultEffect::kChecksum && !reply.empty()) reply.back() ^= 0x55;
  if (rule.Effect == FaultEffect::kCutMid) reply.resize(reply.size() / 2);
  outgoing.ByteByByte = rule.Effect == FaultEffect::kSlow;
  outgoing.CutAfter = rule.Effect == FaultEffect::kCut || rule.Effect == FaultEffect::kCutMid;
  outgoing.Delay = rule.Delay;
  outgoing.Reply = std::move(reply);
  return outgoing;
}

}  // namespace warpline::sim
