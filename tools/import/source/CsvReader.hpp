// Reads tables of text with commas between: quoted fields, a byte order mark, any line end.
//
//   const std::array<std::string_view, 2> columns{"stop_id", "stop_name"};
//   const CsvHead head = readCsv(text, columns, [](const CsvRow& row) { use(row.fields[1]); });
//   if (head.error) ...
//
// Ownership: borrows all that it is given; a row's fields live as long as the call that hands them
// over. Threads: free functions.
// Fails: by value, after the rows before the fault were handed over. What is read is bounded: a row
// at a time, of so many columns, in fields of so many bytes.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tern::imports {

inline constexpr std::size_t mostCsvRows = 2'000'000;
inline constexpr std::size_t mostCsvColumns = 1'000;
inline constexpr std::size_t mostCsvFieldBytes = std::size_t{1} << 20U;

struct CsvRow {
  // From 1 on, without the head.
  std::size_t number = 0;
  // One for each column that was asked for, empty where there is none.
  std::span<const std::string> fields;
  // Whether it has more or fewer fields than the head.
  bool isRagged = false;
};

struct [[nodiscard]] CsvHead {
  // Which of the columns that were asked for are there.
  std::vector<bool> has;
  // The columns that were not asked for.
  std::vector<std::string> others;
  std::optional<std::string> error;
};

CsvHead readCsv(std::string_view text, std::span<const std::string_view> columns,
                const std::function<void(const CsvRow&)>& onRow);

}  // namespace tern::imports
