// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <string>

#include "platform/platform_error.h"

namespace kivandra {

/// A fixed table of texts whose rows are counted from 1. An empty row is unused, and the first empty row ends
/// every walk.
template <std::size_t Rows>
class Table {
 public:
  /// Number of the last row.
  static constexpr std::size_t kLastRow = Rows;

  /// A row by its number from 1 to kLastRow; throws PlatformError (kSubscriptOutOfRange) for any other.
  [[nodiscard]] std::string& operator[](std::size_t row) { return rows_[Index(row)]; }
  [[nodiscard]] const std::string& operator[](std::size_t row) const { return rows_[Index(row)]; }

  /// The first empty row, or kLastRow + 1 if every row is used.
  [[nodiscard]] std::size_t FirstEmptyRow() const {
    std::size_t row = 1;
    while (row <= kLastRow && !(*this)[row].empty()) {
      ++row;
    }
    return row;
  }

  friend bool operator==(const Table&, const Table&) = default;

 private:
  static std::size_t Index(std::size_t row) {
    if (row < 1 || row > kLastRow) {
      throw PlatformError(kSubscriptOutOfRange, "Subscript out of range");
    }
    return row - 1;
  }

  std::array<std::string, Rows> rows_;
};

using BadWordsTable = Table<200>;
using AllowedDomainsTable = Table<100>;

}  // namespace kivandra
