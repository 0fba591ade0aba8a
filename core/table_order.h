#pragma once

#include <cstddef>

namespace warpline {

// Whether each row of a table stands at the index that its key, a field of the row, names. For
// static_assert over tables that are looked up by index.
template <typename Table, typename Key, typename Row>
constexpr bool RowsStandInOrder(const Table& table, Key Row::*key) {
  std::size_t index = 0;
  for (const auto& row : table) {
    if (static_cast<std::size_t>(row.*key) != index++) return false;
  }
  return true;
}

}  // namespace warpline
