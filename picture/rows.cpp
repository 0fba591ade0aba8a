#include "picture/rows.h"

#include <algorithm>
#include <thread>
#include <vector>

namespace warpline {
namespace {

constexpr int kRowsWorthAThread = 64;

}  // namespace

// Every thread takes every nth row, so that none gets all the black ones.
void ForEachRow(int rows, const std::function<void(int)>& draw) {
  const auto cores = static_cast<int>(std::thread::hardware_concurrency());
  const int count = std::clamp(rows / kRowsWorthAThread, 1, std::clamp(cores, 1, 8));
  const auto share = [&draw, rows, count](int first) {
    for (int y = first; y < rows; y += count) draw(y);
  };
  std::vector<std::jthread> helpers;
  for (int i = 1; i < count; ++i) helpers.emplace_back(share, i);
  share(0);
}

}  // namespace warpline
