#include "sim/faults/fault_box.h"

#include <algorithm>
#include <utility>

namespace warpline::sim {
namespace {

using std::chrono::milliseconds;

bool IsUnconditional(const FaultRule& rule) {
  return !rule.Nth && !rule.Once && rule.Every == 1 && rule.Chance >= 1;
}

}  // namespace

FaultBox::FaultBox(std::vector<FaultRule> rules, std::uint64_t seed) : seed_(seed), random_(seed) {
  Replace(std::move(rules));
}

void FaultBox::Replace(std::vector<FaultRule> rules) {
  entries_.clear();
  for (FaultRule& rule : rules) Add(std::move(rule));
}

void FaultBox::Add(FaultRule rule) {
  entries_.push_back({std::move(rule)});
}

bool FaultBox::Remove(std::string_view text) {
  const auto entry = std::ranges::find_if(
      entries_, [text](const Entry& candidate) { return candidate.rule.Text == text; });
  if (entry == entries_.end()) return false;
  entries_.erase(entry);
  return true;
}

void FaultBox::SetSeed(std::uint64_t seed) {
  seed_ = seed;
  random_.seed(seed);
}

std::optional<FaultRule> FaultBox::StrikeExchange(std::uint64_t exchange, ByteView frame) {
  std::optional<FaultRule> rule = Strike(false, exchange, [&](const FaultRule& candidate) {
    return !StrikesLinks(candidate.Effect) && Matches(candidate, exchange, frame);
  });
  if (rule && rule->Jitter.count() > 0) {
    const double shift = (2 * Draw() - 1) * static_cast<double>(rule->Jitter.count());
    rule->Delay += milliseconds(static_cast<milliseconds::rep>(shift));
    rule->Delay = std::max(rule->Delay, milliseconds(0));
  }
  return rule;
}

std::optional<FaultRule> FaultBox::StrikeLink(std::uint64_t number, bool others_open) {
  return Strike(true, number, [=](const FaultRule& candidate) {
    return StrikesLinks(candidate.Effect) && candidate.Nth.value_or(number) == number &&
           (others_open || candidate.Effect != FaultEffect::kSingle);
  });
}

bool FaultBox::RefusesEveryLink() const {
  return std::ranges::any_of(entries_, [](const Entry& entry) {
    return entry.rule.Effect == FaultEffect::kRefuseLink && IsUnconditional(entry.rule);
  });
}

std::vector<std::string> FaultBox::Texts() const {
  std::vector<std::string> texts;
  for (const Entry& entry : entries_) texts.push_back(entry.rule.Text);
  return texts;
}

std::optional<FaultRule> FaultBox::Strike(bool on_links, std::uint64_t number,
                                          const std::function<bool(const FaultRule&)>& meant) {
  std::erase_if(entries_, [&](const Entry& entry) {
    return StrikesLinks(entry.rule.Effect) == on_links && entry.rule.Nth.value_or(number) < number;
  });
  for (auto entry = entries_.begin(); entry != entries_.end(); ++entry) {
    if (!meant(entry->rule)) continue;
    if (++entry->met % entry->rule.Every != 0) continue;
    if (entry->rule.Chance < 1 && Draw() >= entry->rule.Chance) continue;
    const FaultRule rule = entry->rule;
    if (rule.Once || rule.Nth) entries_.erase(entry);
    Note(number, rule);
    return rule;
  }
  return std::nullopt;
}

// The library's distributions may differ from system to system; a seed is to mean the same
// everywhere.
double FaultBox::Draw() {
  return static_cast<double>(random_() >> 11) * 0x1p-53;
}

void FaultBox::Note(std::uint64_t number, const FaultRule& rule) {
  if (strikes_.size() >= kKeptStrikes) strikes_.erase(strikes_.begin());
  const char* what = StrikesLinks(rule.Effect) ? "connection " : "exchange ";
  strikes_.push_back(what + std::to_string(number) + ": " + rule.Text);
}

}  // namespace warpline::sim
