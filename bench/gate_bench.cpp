// SPDX-License-Identifier: GPL-3.0-or-later
// The rules on an address, on an address that runs through all of them.
#include <benchmark/benchmark.h>

#include <string>

#include "filter/bad_words.h"
#include "filter/filter_values.h"
#include "filter/gate.h"

namespace {

using namespace kivandra;

void FillTables(bool toTheLastRow) {
  ResetFilterValues();
  FillBadWords();
  if (!toTheLastRow) {
    return;
  }
  for (std::size_t row = BadWords.FirstEmptyRow(); row <= BadWordsTable::kLastRow; ++row) {
    BadWords[row] = "refused-site-" + std::to_string(row) + ".example";
  }
  for (std::size_t row = 1; row <= AllowedDomainsTable::kLastRow; ++row) {
    AllowedDomains[row] = "allowed-site-" + std::to_string(row) + ".example";
  }
}

void JudgeAddressOf(benchmark::State& state, bool fullTables, std::size_t length) {
  FillTables(fullTables);
  std::string url = "https://example.org/learn/animals/";
  while (url.size() < length) {
    url += "whale-facts/";
  }
  for (auto _ : state) {
    benchmark::DoNotOptimize(
        JudgeAddress(url, "http://example.org/", false, false, true, true, AllowedDomains, BadWords));
  }
}

BENCHMARK_CAPTURE(JudgeAddressOf, built_in_rows, false, 60);
BENCHMARK_CAPTURE(JudgeAddressOf, full_tables, true, 60);
BENCHMARK_CAPTURE(JudgeAddressOf, full_tables_long_address, true, 8000)->Unit(benchmark::kMicrosecond);

}  // namespace
