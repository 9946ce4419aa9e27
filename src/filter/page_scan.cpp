// SPDX-License-Identifier: GPL-3.0-or-later
#include "filter/page_scan.h"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "filter/word_search.h"

namespace kivandra {

namespace {

/// A search and the words that it was made of: the table changes seldom, and pages come often.
class LastSearch {
 public:
  /// The search for rows 1 to `rows` of the table.
  const WordSearch& For(const BadWordsTable& badWords, std::size_t rows) {
    if (!search_ || !IsMadeOf(badWords, rows)) {
      search_.reset();
      words_.clear();
      for (std::size_t row = 1; row <= rows; ++row) {
        words_.push_back(badWords[row]);
      }
      search_.emplace(words_);
    }
    return *search_;
  }

 private:
  [[nodiscard]] bool IsMadeOf(const BadWordsTable& badWords, std::size_t rows) const {
    if (words_.size() != rows) {
      return false;
    }
    for (std::size_t row = 1; row <= rows; ++row) {
      if (words_[row - 1] != badWords[row]) {
        return false;
      }
    }
    return true;
  }

  std::vector<std::string> words_;
  std::optional<WordSearch> search_;
};

}  // namespace

bool PageScanFinds(std::string_view page, const BadWordsTable& badWords) {
  // Each row searches the whole page on its own, and a row behind another one can't take a hit back. So one
  // search for all rows up to the first empty one, or to the last that is looked at, finds what the walk
  // finds.
  const std::size_t rows = std::min(badWords.FirstEmptyRow() - 1, kLastScannedRow);
  thread_local LastSearch lastSearch;  // what it holds is all of the table's content; nothing is shared
  if (lastSearch.For(badWords, rows).FindsIn(page)) {
    return true;
  }
  // The walk has met an empty row, and there an empty page counts as found.
  const bool metAnEmptyRow = rows < kLastScannedRow;
  return metAnEmptyRow && page.empty();
}

}  // namespace kivandra
