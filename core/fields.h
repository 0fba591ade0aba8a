#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <type_traits>

// Integer fields of records as rows of tables, so that a file's reader and writer walk one list.

namespace warpline {

// Both ends included.
struct Range {
  std::int32_t low;
  std::int32_t high;

  constexpr bool Holds(std::int32_t value) const { return low <= value && value <= high; }
};

// One field: its key in files, what a file may hold, and access to it.
template <typename Record>
struct FieldRow {
  std::string_view key;
  Range file;
  std::int32_t (*load)(const Record&);
  void (*store)(Record&, std::int32_t);  // a value that the field's type holds
};

template <auto Field, typename Record>
constexpr FieldRow<Record> RowOf(std::string_view key, Range file) {
  return {key, file, [](const Record& record) { return std::int32_t{record.*Field}; },
          [](Record& record, std::int32_t value) {
            record.*Field = static_cast<std::remove_reference_t<decltype(record.*Field)>>(value);
          }};
}

// Stores a value under a key when a file may hold it. True: stored; false: out of range; nothing:
// no such key. The rows are FieldRow<Record> or derive from it.
template <typename Row, std::size_t kRows, typename Record>
std::optional<bool> StoreField(const std::array<Row, kRows>& rows, std::string_view key,
                               std::int32_t value, Record& record) {
  for (const FieldRow<Record>& row : rows) {
    if (row.key != key) continue;
    const bool in_range = row.file.Holds(value);
    if (in_range) row.store(record, value);
    return in_range;
  }
  return std::nullopt;
}

}  // namespace warpline
