#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cli/session.h"
#include "core/correction.h"
#include "core/register_set.h"

// What the user gave to a verb: texts by argument name, and their conversions. A conversion that
// fails has said so and returns nothing; the verb then ends with kExitUsage.

namespace warpline {

inline constexpr int kMinPanelLines = 16;
inline constexpr int kMaxPanelLines = 2048;

// Stands among the texts of an argument of lists where it was given again.
inline constexpr std::string_view kNextGiven;

class VerbInput {
 public:
  explicit VerbInput(Session& session) : session_(session) {}

  // Name as in the verb's table ("FILE", "--panel"); a flag has one empty text.
  void Set(std::string_view name, std::vector<std::string> texts);

  bool Has(std::string_view name) const;
  const std::vector<std::string>& Texts(std::string_view name) const;

  // The first text; empty when the argument was not given.
  const std::string& Text(std::string_view name) const;

  // A file name.
  std::filesystem::path Path(std::string_view name) const;

  // --panel WIDTHxHEIGHT, 16..2048 each way; 1024x768 when not given.
  std::optional<PanelSize> Panel() const;

  // --axis h or v; the horizontal axis when not given.
  std::optional<Axis> AxisChoice() const;

  // A whole number from min to max, both included; fallback when not given.
  std::optional<int> Number(std::string_view name, int min, int max, int fallback) const;

 private:
  Session& session_;
  std::map<std::string, std::vector<std::string>, std::less<>> given_;
};

}  // namespace warpline
