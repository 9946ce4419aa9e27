// SPDX-License-Identifier: GPL-3.0-or-later
// The page scan against its definition, word by word and place by place. The input's lines are the words;
// behind the first empty line stands the page.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "filter/page_scan.h"
#include "filter/word_search.h"
#include "support/unicode.h"

namespace {

using namespace kivandra;

std::u32string Points(std::string_view text) {
  std::u32string points;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t before = at;
    points.push_back(DecodeUtf8(text, at));
    if (at <= before || at > text.size()) {
      std::abort();
    }
  }
  return points;
}

bool StandsIn(const std::u32string& page, const std::u32string& word) {
  if (word.empty() || word.size() > page.size()) {
    return false;
  }
  for (std::size_t at = 0; at + word.size() <= page.size(); ++at) {
    const std::size_t end = at + word.size();
    if (std::equal(word.begin(), word.end(), page.begin() + static_cast<std::ptrdiff_t>(at),
                   [](char32_t a, char32_t b) { return FoldCase(a) == FoldCase(b); }) &&
        (at == 0 || !IsLetterOrDigit(page[at - 1])) && (end == page.size() || !IsLetterOrDigit(page[end]))) {
      return true;
    }
  }
  return false;
}

void MustAgree(bool found, bool expected, const char* what) {
  if (found != expected) {
    std::fprintf(stderr, "%s: %d, by definition %d\n", what, found, expected);
    std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size > 4096) {
    return 0;
  }
  std::string_view rest(reinterpret_cast<const char*>(data), size);
  std::vector<std::string> words;
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find('\n'), rest.size());
    const std::string_view word = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    if (word.empty()) {
      break;
    }
    words.emplace_back(word);
  }

  const std::u32string page = Points(rest);
  const auto standsInPage = [&](const std::string& word) { return StandsIn(page, Points(word)); };
  MustAgree(WordSearch(words).FindsIn(rest), std::any_of(words.begin(), words.end(), standsInPage), "search");

  BadWordsTable table;
  const std::size_t rows = std::min(words.size(), BadWordsTable::kLastRow);
  for (std::size_t row = 1; row <= rows; ++row) {
    table[row] = words[row - 1];
  }
  // The walk, row by row.
  bool found = false;
  for (std::size_t row = 1; row <= kLastScannedRow && !found; ++row) {
    found = standsInPage(table[row]);
    if (!found && table[row].empty()) {
      found = rest.empty();
      break;
    }
  }
  MustAgree(PageScanFinds(rest, table), found, "scan");
  return 0;
}
