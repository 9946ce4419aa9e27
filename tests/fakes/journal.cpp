// SPDX-License-Identifier: GPL-3.0-or-later
#include "fakes/journal.h"

#include <algorithm>
#include <iterator>

namespace kivandra::fakes {

Journal::Journal() = default;

Journal::~Journal() = default;

void Journal::Call(const std::string& line) {
  ++calls;
  if (watch) {
    watch(line);
  }
  if (calls == failAt || line == failOn) {
    lines.push_back("FAILED " + line);
    throw PlatformError(kInvalidCall, "injected fault");
  }
  lines.push_back(line);
}

void Journal::Note(const std::string& line) { lines.push_back(line); }

bool Journal::Has(const std::string& line) const {
  return std::find(lines.begin(), lines.end(), line) != lines.end();
}

long Journal::Count(const std::string& line) const {
  return static_cast<long>(std::count(lines.begin(), lines.end(), line));
}

std::vector<std::string> Journal::With(const std::string& part) const {
  std::vector<std::string> found;
  std::copy_if(lines.begin(), lines.end(), std::back_inserter(found),
               [&](const std::string& line) { return line.find(part) != std::string::npos; });
  return found;
}

long Journal::Index(const std::string& line) const {
  const auto at = std::find(lines.begin(), lines.end(), line);
  return at == lines.end() ? -1 : static_cast<long>(at - lines.begin());
}

void Journal::Clear() { lines.clear(); }

std::string Quoted(const std::string& text) { return "\"" + text + "\""; }

}  // namespace kivandra::fakes
