#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "sim/faults/faults.h"

// The fault rules in force: counts what they are to strike, draws what they leave to chance, and
// drops a rule that can never strike again.

namespace warpline::sim {

inline constexpr std::size_t kKeptStrikes = 64;

class FaultBox {
 public:
  FaultBox(std::vector<FaultRule> rules, std::uint64_t seed);

  // Other rules from now on; the counts begin anew, the draws go on.
  void Replace(std::vector<FaultRule> rules);
  void Add(FaultRule rule);
  // Removes the first rule of that text; false when there is none.
  bool Remove(std::string_view text);

  // Draws begin anew from that number.
  void SetSeed(std::uint64_t seed);
  std::uint64_t Seed() const { return seed_; }

  // The rule that strikes this exchange: the first that means it. Its delay is the drawn one.
  std::optional<FaultRule> StrikeExchange(std::uint64_t exchange, ByteView frame);

  // The rule that strikes the connection with that number (from 1), while others stand.
  std::optional<FaultRule> StrikeLink(std::uint64_t number, bool others_open);

  // True while every caller is to be turned away.
  bool RefusesEveryLink() const;

  // The rules in force as they were given.
  std::vector<std::string> Texts() const;

  // The last kKeptStrikes strikes, oldest first: "exchange 7: kind=21:refuse".
  const std::vector<std::string>& Strikes() const { return strikes_; }

 private:
  struct Entry {
    FaultRule rule;
    std::uint64_t met = 0;  // what its nth and kind meant so far
  };

  std::optional<FaultRule> Strike(bool on_links, std::uint64_t number,
                                  const std::function<bool(const FaultRule&)>& meant);
  double Draw();
  void Note(std::uint64_t number, const FaultRule& rule);

  std::vector<Entry> entries_;
  std::vector<std::string> strikes_;
  std::uint64_t seed_;
  std::mt19937_64 random_;
};

}  // namespace warpline::sim
