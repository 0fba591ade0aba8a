#include "sim/faults/faults.h"

#include <algorithm>
#include <array>
#include <utility>

#include "core/conversions.h"

namespace warpline::sim {
namespace {

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
  bool executed;
  bool on_links;
};

constexpr std::array kEffects{
    EffectRow{"timeout", FaultEffect::kTimeOut, false, false},
    EffectRow{"refuse", FaultEffect::kRefuse, false, false},
    EffectRow{"unkept", FaultEffect::kUnkept, true, false},
    EffectRow{"short", FaultEffect::kShort, true, false},
    EffectRow{"long", FaultEffect::kLong, true, false},
    EffectRow{"duplicate", FaultEffect::kDuplicate, true, false},
    EffectRow{"checksum", FaultEffect::kChecksum, true, false},
    EffectRow{"late", FaultEffect::kLate, true, false},
    EffectRow{"slow", FaultEffect::kSlow, true, false},
    EffectRow{"cut", FaultEffect::kCut, false, false},
    EffectRow{"cutmid", FaultEffect::kCutMid, true, false},
    EffectRow{"restart", FaultEffect::kRestart, false, false},
    EffectRow{"refuselink", FaultEffect::kRefuseLink, false, true},
    EffectRow{"halfopen", FaultEffect::kHalfOpen, false, true},
    EffectRow{"single", FaultEffect::kSingle, false, true},
};

const EffectRow& RowOf(FaultEffect effect) {
  return *std::ranges::find(kEffects, effect, &EffectRow::effect);
}

// Removes the prefix; false when the text does not begin with it.
bool Take(std::string_view& text, std::string_view prefix) {
  if (!text.starts_with(prefix)) return false;
  text.remove_prefix(prefix.size());
  return true;
}

// The number of a command without a row of its own in the table.
std::optional<int> PlainCommand(std::string_view name) {
  const std::optional<int> number = WholeNumber(name, 0, 17);
  if (number && (*number == 13 || *number == 15)) return std::nullopt;
  return number;
}

bool IsKind(std::string_view name) {
  if (name == "any" || name == "probe") return true;
  if (std::ranges::find(kKinds, name, &KindRow::name) != kKinds.end()) return true;
  return PlainCommand(name).has_value();
}

// A whole number in a range; else false, and the reason.
bool TakeNumber(std::string_view text, std::uint64_t least, std::uint64_t most,
                std::uint64_t& value, NamedText& reason, const NamedText& needed) {
  const std::optional<std::uint64_t> number = WholeNumber(text, least, most);
  value = number.value_or(value);
  if (!number) reason = needed;
  return number.has_value();
}

bool ParseChance(std::string_view text, double& chance, NamedText& reason) {
  if (ReadReal(text, 0, 1, chance) && chance > 0) return true;
  reason = {"FaultNeedsChance"};
  return false;
}

bool ParseKind(std::string_view text, std::string& kind, NamedText& reason) {
  kind = text;
  if (IsKind(text)) return true;
  reason = {"FaultNeedsKind"};
  return false;
}

bool ParseCondition(std::string_view text, FaultRule& rule, NamedText& reason) {
  if (Take(text, "nth=")) {
    std::uint64_t nth = 0;
    const bool right = TakeNumber(text, 1, kMaxNth, nth, reason, {"FaultNeedsNumber", {"nth="}});
    rule.Nth = nth;
    return right;
  }
  if (Take(text, "every=")) {
    return TakeNumber(text, 1, kMaxNth, rule.Every, reason, {"FaultNeedsNumber", {"every="}});
  }
  if (Take(text, "kind=")) return ParseKind(text, rule.Kind, reason);
  if (Take(text, "chance=")) return ParseChance(text, rule.Chance, reason);
  rule.Once = rule.Once || text == "once";
  if (text == "once" || text == "always") return true;
  reason = {"FaultNeedsWhen"};
  return false;
}

bool ParseWhen(std::string_view text, FaultRule& rule, NamedText& reason) {
  for (;;) {
    const std::size_t comma = text.find(',');
    if (!ParseCondition(text.substr(0, comma), rule, reason)) return false;
    if (comma == std::string_view::npos) return true;
    text.remove_prefix(comma + 1);
  }
}

bool ParseDelay(std::string_view text, FaultRule& rule, NamedText& reason) {
  const NamedText needed{"FaultNeedsDelay"};
  const std::size_t wave = text.find('~');
  std::uint64_t delay = 0;
  std::uint64_t jitter = 0;
  const bool right = TakeNumber(text.substr(0, wave), 0, kMaxDelayMs, delay, reason, needed) &&
                     (wave == std::string_view::npos ||
                      TakeNumber(text.substr(wave + 1), 0, kMaxDelayMs, jitter, reason, needed));
  rule.Effect = FaultEffect::kLate;
  rule.Delay = std::chrono::milliseconds(delay);
  rule.Jitter = std::chrono::milliseconds(jitter);
  return right;
}

bool ParseWhat(std::string_view text, FaultRule& rule, NamedText& reason) {
  if (Take(text, "late=")) return ParseDelay(text, rule, reason);
  const auto* row = std::ranges::find(kEffects, text, &EffectRow::name);
  if (row == kEffects.end() || row->effect == FaultEffect::kLate) {
    reason = {"FaultNeedsWhat"};
    return false;
  }
  rule.Effect = row->effect;
  if (!row->on_links || rule.Kind == "any") return true;
  reason = {"FaultOfLinksHasNoKind"};
  return false;
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
  return HasHeader(frame, kDataHeader) && PlainCommand(kind) == byte5;
}

}  // namespace

std::optional<FaultRule> ParseFaultRule(std::string_view text, NamedText& reason) {
  FaultRule rule;
  rule.Text = text;
  const std::size_t colon = text.find(':');
  const bool parsed = ParseWhen(text.substr(0, colon), rule, reason);
  const std::string_view what =
      colon == std::string_view::npos ? std::string_view() : text.substr(colon + 1);
  if (parsed && ParseWhat(what, rule, reason)) return rule;
  reason = {"BadFault", {rule.Text}, {reason}};
  return std::nullopt;
}

bool Matches(const FaultRule& rule, std::uint64_t exchange, ByteView frame) {
  return rule.Nth.value_or(exchange) == exchange && IsOfKind(rule.Kind, frame);
}

bool StrikesLinks(FaultEffect effect) {
  return RowOf(effect).on_links;
}

std::vector<std::string_view> FaultNames() {
  std::vector<std::string_view> names;
  names.reserve(kEffects.size());
  for (const EffectRow& row : kEffects) names.push_back(row.name);
  return names;
}

bool IsExecuted(FaultEffect effect) {
  return RowOf(effect).executed;
}

Outgoing Spoil(const FaultRule& rule, Bytes reply) {
  const FaultEffect effect = rule.Effect;
  Outgoing outgoing;
  if (!IsExecuted(effect) && effect != FaultEffect::kRefuse) reply.clear();
  if (effect == FaultEffect::kShort) {
    reply.resize(reply.size() - std::min<std::size_t>(2, reply.size()));
  }
  if (effect == FaultEffect::kLong) reply.insert(reply.end(), {0x00, 0xFF});
  if (effect == FaultEffect::kDuplicate) {
    const Bytes copy = reply;
    reply.insert(reply.end(), copy.begin(), copy.end());
  }
  if (effect == FaultEffect::kChecksum && !reply.empty()) reply.back() ^= 0x55;
  if (effect == FaultEffect::kCutMid) reply.resize(reply.size() / 2);
  outgoing.ByteByByte = effect == FaultEffect::kSlow;
  outgoing.CutAfter = effect == FaultEffect::kCut || effect == FaultEffect::kCutMid ||
                      effect == FaultEffect::kRestart;
  outgoing.Delay = rule.Delay;
  outgoing.Reply = std::move(reply);
  return outgoing;
}

}  // namespace warpline::sim
