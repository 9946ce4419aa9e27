// SPDX-License-Identifier: GPL-3.0-or-later
// Routing of an address box's text, beside the plain way: dictionaries filled anew for each text and a copy
// of the text in small letters.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <unordered_set>

#include "browser/routing.h"
#include "hosts.h"

namespace {

using namespace kivandra;

template <typename Words>
std::unordered_set<std::string> Dictionary(const Words& words) {
  std::unordered_set<std::string> dictionary;
  for (const std::string_view word : words) dictionary.emplace(word);
  return dictionary;
}

std::string PlainGetURL(const std::string& text) {
  const auto english = Dictionary(kEnglishQuestionWords);
  const auto spanish = Dictionary(kSpanishQuestionWords);
  std::string small = text;
  std::transform(small.begin(), small.end(), small.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
  const auto has = [&small](const char* part) { return small.find(part) != std::string::npos; };
  const bool ending = has(".net") || has(".com") || has(".org");
  if (text.empty()) return std::string(hosts::kProductHome);
  if (has("www.")) return !ending ? WordSearchURL(text) : has("http://") ? text : "http://" + text;
  if (has("http://")) return text;
  if (ending) return "http://www." + text;
  const auto anyOf = [&text](const std::unordered_set<std::string>& table) {
    std::size_t from = 0;
    for (;;) {
      const std::size_t blank = text.find(' ', from);
      if (table.count(text.substr(from, blank - from)) != 0) return true;
      if (blank == std::string::npos) return false;
      from = blank + 1;
    }
  };
  if (text.find(' ') == std::string::npos) return WordSearchURL(text);
  if (anyOf(english)) return EnglishQuestionURL(text);
  if (anyOf(spanish)) return SpanishQuestionURL(text);
  return WordSearchURL(text);
}

std::string Repeated(std::string_view piece, std::size_t size) {
  std::string text;
  while (text.size() < size) text += piece;
  return text;
}

const std::string& Text(int64_t number) {
  static const std::string texts[] = {"www.example.com", "what is the largest whale in the sea",
                                      Repeated("Pudiesf ", 1 << 20), Repeated(" ", 1 << 20),
                                      Repeated(".co:ww.", 1 << 20)};
  return texts[number];
}

void Routing(benchmark::State& state) {
  const std::string& text = Text(state.range(0));
  for (auto _ : state) benchmark::DoNotOptimize(getURL(text));
  state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(text.size()));
}
BENCHMARK(Routing)->DenseRange(0, 4);

void PlainRouting(benchmark::State& state) {
  const std::string& text = Text(state.range(0));
  for (auto _ : state) benchmark::DoNotOptimize(PlainGetURL(text));
  state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(text.size()));
}
BENCHMARK(PlainRouting)->DenseRange(0, 4);

}  // namespace
