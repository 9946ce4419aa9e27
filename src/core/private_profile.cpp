// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/private_profile.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <vector>

#include "support/attempt.h"

namespace kivandra {
namespace {

constexpr std::string_view kBlanks = " \t\r\n";
constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kUtf16Mark = "\xFF\xFE";
constexpr std::string_view kLineEnd = "\r\n";

std::string_view Trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(kBlanks);
  return first == std::string_view::npos ? std::string_view()
                                         : text.substr(first, text.find_last_not_of(kBlanks) + 1 - first);
}

bool AlikeIgnoringCase(std::string_view one, std::string_view other) {
  const auto small = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; };
  return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                    [small](char a, char b) { return small(a) == small(b); });
}

/// The lines with their ends.
std::vector<std::string> LinesOf(const std::string& text) {
  std::vector<std::string> lines;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = text.find('\n', at);
    const std::size_t next = end == std::string::npos ? text.size() : end + 1;
    lines.push_back(text.substr(at, next - at));
    at = next;
  }
  return lines;
}

std::string_view EndOf(std::string_view line) {
  if (line.ends_with(kLineEnd)) {
    return kLineEnd;
  }
  return line.ends_with('\n') ? kLineEnd.substr(1) : std::string_view();
}

bool IsHead(std::string_view line) {
  const std::string_view text = Trimmed(line);
  return text.starts_with('[') && text.find(']') != std::string_view::npos;
}

bool IsHeadOf(std::string_view line, std::string_view section) {
  const std::string_view text = Trimmed(line);
  return IsHead(line) && AlikeIgnoringCase(Trimmed(text.substr(1, text.find(']') - 1)), Trimmed(section));
}

/// The key that a line sets, or an empty text.
std::string_view KeyOf(std::string_view line) {
  const std::size_t equals = line.find('=');
  const std::string_view key = Trimmed(line.substr(0, equals));
  return equals == std::string_view::npos || key.starts_with(';') ? std::string_view() : key;
}

/// Puts a new line behind the line `at` - 1, which gets an end if it has none.
void Insert(std::vector<std::string>& lines, std::size_t at, const std::string& line) {
  const std::string end(lines.empty() || EndOf(lines[0]).empty() ? kLineEnd : EndOf(lines[0]));
  if (at > 0 && EndOf(lines[at - 1]).empty()) {
    lines[at - 1] += end;
  }
  lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(at), line + end);
}

void PutValue(std::vector<std::string>& lines, const std::string& section, const std::string& key,
              const std::string& value) {
  std::size_t at = 0;
  while (at < lines.size() && !IsHeadOf(lines[at], section)) {
    ++at;
  }
  if (at == lines.size()) {
    Insert(lines, lines.size(), "[" + section + "]");
    Insert(lines, lines.size(), key + "=" + value);
    return;
  }
  std::size_t behind = ++at;
  for (; at < lines.size() && !IsHead(lines[at]); ++at) {
    if (const std::string_view found = KeyOf(lines[at]);
        !found.empty() && AlikeIgnoringCase(found, Trimmed(key))) {
      lines[at] = std::string(found) + "=" + value + std::string(EndOf(lines[at]));
      return;
    }
    if (!Trimmed(lines[at]).empty()) {
      behind = at + 1;
    }
  }
  Insert(lines, behind, key + "=" + value);
}

}  // namespace

bool WritePrivateProfileStringA(FileCalls& files, const std::string& section, const std::string& key,
                                const std::string& value, const std::string& file) {
  bool written = false;
  attempt([&] {
    std::string text = files.Dir(file).empty() ? std::string() : files.ReadFile(file);
    if (text.starts_with(kUtf16Mark)) {
      return;
    }
    std::string mark;
    if (text.starts_with(kUtf8Mark)) {
      mark = kUtf8Mark;
      text.erase(0, kUtf8Mark.size());
    }
    std::vector<std::string> lines = LinesOf(text);
    PutValue(lines, section, key, value);
    for (const std::string& line : lines) {
      mark += line;
    }
    files.WriteFile(file, mark);
    written = true;
  });
  return written;
}

}  // namespace kivandra
