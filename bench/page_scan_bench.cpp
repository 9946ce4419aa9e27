// SPDX-License-Identifier: GPL-3.0-or-later
// The page scan on pages without a hit, which is its longest way, against searches that look row by row and
// against regular expressions. The rivals know ASCII only, which spares them work.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <functional>
#include <random>
#include <regex>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "filter/bad_words.h"
#include "filter/filter_values.h"
#include "filter/page_scan.h"
#include "filter/word_search.h"

#ifdef KIVANDRA_BENCH_PCRE2
#define PCRE2_CODE_UNIT_WIDTH 8
#include <pcre2.h>
#endif

namespace {

using namespace kivandra;

constexpr std::size_t kKiB = 1024;
constexpr std::size_t kMiB = 1024 * kKiB;

/// Text that looks like the source of a page and holds none of the built-in rows.
std::string Page(std::size_t size) {
  static const std::vector<std::string> pieces = {
      "<div class=\"",
      "</div>\n",
      "<a href=\"http://example.org/index.html\">",
      "</a>",
      "the ",
      "children ",
      "Sussex ",
      "document ",
      "cucumber ",
      "function(x){return x-1;} ",
      "analysis, ",
      "x-ray ",
      "Dickens ",
      "&nbsp;",
      "peacock ",
      "of ",
      "and ",
      "\n    ",
      "style=\"margin:0 auto;\" ",
      "caf\xC3\xA9 ",
      "1234567 ",
      "<p>",
      "</p>\n",
      "- shots ",
  };
  std::mt19937 random(1);
  std::string page;
  page.reserve(size + 64);
  while (page.size() < size) {
    page += pieces[random() % pieces.size()];
  }
  return page;
}

std::string Repeated(std::string_view unit, std::size_t size) {
  std::string text;
  text.reserve(size + unit.size());
  while (text.size() < size) {
    text += unit;
  }
  return text;
}

const BadWordsTable& BuiltInTable() {
  FillBadWords();
  return BadWords;
}

bool InWord(char c) { return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z'); }

std::string Lowered(std::string text) {
  for (char& c : text) {
    c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
  }
  return text;
}

bool StandsAlone(std::string_view text, std::size_t at, std::size_t length) {
  return (at == 0 || !InWord(text[at - 1])) && (at + length == text.size() || !InWord(text[at + length]));
}

/// The rows in lower case, repeats taken out: the rivals need not be slower than they must.
std::vector<std::string> LoweredRows() {
  std::set<std::string> rows;
  for (std::size_t row = 1; row <= kBuiltInRows; ++row) {
    rows.insert(Lowered(BuiltInTable()[row]));
  }
  return {rows.begin(), rows.end()};
}

void MustNotFind(benchmark::State& state, bool found) {
  if (found) {
    state.SkipWithError("the page was to be clean");
  }
}

void CountBytes(benchmark::State& state, const std::string& page) {
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                          static_cast<std::int64_t>(page.size()));
}

void ScanOf(benchmark::State& state, const std::string& page) {
  const BadWordsTable& table = BuiltInTable();
  for (auto _ : state) {
    MustNotFind(state, PageScanFinds(page, table));
  }
  CountBytes(state, page);
}

void PageScan(benchmark::State& state) { ScanOf(state, Page(static_cast<std::size_t>(state.range(0)))); }
BENCHMARK(PageScan)->Arg(64 * kKiB)->Arg(kMiB)->Arg(32 * kMiB)->Unit(benchmark::kMillisecond);

void PageScanOfCyrillic(benchmark::State& state) {
  ScanOf(state, Repeated("\xD0\xB4\xD0\xB5\xD1\x82\xD0\xB8 ", kMiB));
}
BENCHMARK(PageScanOfCyrillic)->Unit(benchmark::kMillisecond);

void PageScanOfChinese(benchmark::State& state) {
  ScanOf(state, Repeated("\xE5\x84\xBF\xE7\xAB\xA5\xEF\xBC\x8C", kMiB));
}
BENCHMARK(PageScanOfChinese)->Unit(benchmark::kMillisecond);

/// Every word begins like a row and breaks off at its last letter.
void PageScanOfNearMisses(benchmark::State& state) {
  ScanOf(state, Repeated("freesexnud cocksucke -shots!blo ", kMiB));
}
BENCHMARK(PageScanOfNearMisses)->Unit(benchmark::kMillisecond);

void PageScanOfBrokenBytes(benchmark::State& state) { ScanOf(state, Repeated("\xFF", kMiB)); }
BENCHMARK(PageScanOfBrokenBytes)->Unit(benchmark::kMillisecond);

/// What a change of the table costs once.
void MakingTheSearch(benchmark::State& state) {
  std::vector<std::string> words;
  for (std::size_t row = 1; row <= kBuiltInRows; ++row) {
    words.push_back(BuiltInTable()[row]);
  }
  for (auto _ : state) {
    benchmark::DoNotOptimize(WordSearch(words));
  }
}
BENCHMARK(MakingTheSearch)->Unit(benchmark::kMillisecond);

void RowByRowFind(benchmark::State& state) {
  const std::string page = Page(static_cast<std::size_t>(state.range(0)));
  const auto rows = LoweredRows();
  for (auto _ : state) {
    const std::string text = Lowered(page);
    const bool found = std::any_of(rows.begin(), rows.end(), [&](const std::string& row) {
      for (std::size_t at = text.find(row); at != std::string::npos; at = text.find(row, at + 1)) {
        if (StandsAlone(text, at, row.size())) {
          return true;
        }
      }
      return false;
    });
    MustNotFind(state, found);
  }
  CountBytes(state, page);
}
BENCHMARK(RowByRowFind)->Arg(kMiB)->Unit(benchmark::kMillisecond);

void RowByRowHorspool(benchmark::State& state) {
  const std::string page = Page(static_cast<std::size_t>(state.range(0)));
  const auto rows = LoweredRows();
  using Searcher = std::boyer_moore_horspool_searcher<std::string::const_iterator>;
  std::vector<Searcher> searchers;
  for (const std::string& row : rows) {
    searchers.emplace_back(row.begin(), row.end());
  }
  for (auto _ : state) {
    const std::string text = Lowered(page);
    for (std::size_t i = 0; i < rows.size(); ++i) {
      for (auto at = std::search(text.begin(), text.end(), searchers[i]); at != text.end();
           at = std::search(at + 1, text.end(), searchers[i])) {
        MustNotFind(state, StandsAlone(text, static_cast<std::size_t>(at - text.begin()), rows[i].size()));
      }
    }
  }
  CountBytes(state, page);
}
BENCHMARK(RowByRowHorspool)->Arg(kMiB)->Unit(benchmark::kMillisecond);

/// All rows as one expression; `before` and `after` are its way to say that no letter or digit stands there.
std::string Expression(const std::string& before, const std::string& after) {
  std::string expression = before + "(?:";
  for (const std::string& row : LoweredRows()) {
    for (const char c : row) {
      expression += InWord(c) || c == ' ' || c == ',' || c == '!' ? std::string(1, c) : std::string("\\") + c;
    }
    expression += '|';
  }
  expression.back() = ')';
  return expression + after;
}

void StandardRegex(benchmark::State& state) {
  // This library has no look behind, so the character before a word is part of the match.
  const std::regex regex(Expression("(?:^|[^a-z0-9])", "(?![a-z0-9])"),
                         std::regex::icase | std::regex::optimize);
  const std::string page = Page(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) {
    MustNotFind(state, std::regex_search(page, regex));
  }
  CountBytes(state, page);
}
BENCHMARK(StandardRegex)->Arg(64 * kKiB)->Unit(benchmark::kMillisecond);

#ifdef KIVANDRA_BENCH_PCRE2
void CompiledRegex(benchmark::State& state) {
  const std::string expression = Expression("(?<![a-z0-9])", "(?![a-z0-9])");
  int error = 0;
  PCRE2_SIZE offset = 0;
  pcre2_code* const code = pcre2_compile(reinterpret_cast<PCRE2_SPTR>(expression.data()), expression.size(),
                                         PCRE2_CASELESS, &error, &offset, nullptr);
  if (code == nullptr || pcre2_jit_compile(code, PCRE2_JIT_COMPLETE) != 0) {
    throw std::runtime_error("the expression does not compile");
  }
  pcre2_match_data* const match = pcre2_match_data_create_from_pattern(code, nullptr);
  const std::string page = Page(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) {
    MustNotFind(state, pcre2_match(code, reinterpret_cast<PCRE2_SPTR>(page.data()), page.size(), 0, 0, match,
                                   nullptr) != PCRE2_ERROR_NOMATCH);
  }
  CountBytes(state, page);
  pcre2_match_data_free(match);
  pcre2_code_free(code);
}
BENCHMARK(CompiledRegex)->Arg(kMiB)->Unit(benchmark::kMillisecond);
#endif

}  // namespace
