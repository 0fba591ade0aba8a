#include "core/nearest_word.h"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <utility>

namespace warpline {
namespace {

using Row = std::vector<std::size_t>;

// How many letters must be changed, added, taken out or swapped with their neighbour. A row holds
// the distances from the first letters of one word to the beginnings of the other.
std::size_t Distance(std::string_view from, std::string_view to) {
  Row before(to.size() + 1);
  Row last = before;
  std::iota(last.begin(), last.end(), std::size_t{0});
  for (std::size_t i = 1; i <= from.size(); ++i) {
    Row row(to.size() + 1, i);
    for (std::size_t j = 1; j <= to.size(); ++j) {
      const std::size_t change = from[i - 1] == to[j - 1] ? 0 : 1;
      row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + change});
      const bool swapped = i > 1 && j > 1 && from[i - 1] == to[j - 2] && from[i - 2] == to[j - 1];
      if (swapped) row[j] = std::min(row[j], before[j - 2] + 1);
    }
    before = std::exchange(last, std::move(row));
  }
  return last.back();
}

}  // namespace

std::string NearestWord(std::string_view word, const std::vector<std::string>& known) {
  constexpr std::size_t kLettersForOne = 4;
  constexpr std::size_t kLongest = 64;  // of any word that is known
  std::string nearest;
  if (word.size() > kLongest) return nearest;
  std::size_t limit = 2 + word.size() / kLettersForOne;
  for (const std::string& candidate : known) {
    const std::size_t distance = Distance(word, candidate);
    if (distance >= limit) continue;
    limit = distance;
    nearest = candidate;
  }
  return nearest;
}

}  // namespace warpline
