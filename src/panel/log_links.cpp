// SPDX-License-Identifier: GPL-3.0-or-later
#include "panel/log_links.h"

#include <algorithm>
#include <array>

namespace kivandra {

namespace {

constexpr std::array<std::string_view, 3> kSchemes = {"http", "https", "ftp"};
constexpr std::string_view kSlashes = "://";
constexpr std::string_view kWhiteSpace = " \t\r\n\v\f";

bool IsWordCharacter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

/// Whether `text` ends with this scheme, in any case, and the scheme begins no later than a word does.
bool EndsWithScheme(std::string_view text, std::string_view scheme) {
  if (text.size() < scheme.size()) {
    return false;
  }
  const std::size_t begin = text.size() - scheme.size();
  return (begin == 0 || !IsWordCharacter(text[begin - 1])) &&
         std::equal(
             scheme.begin(), scheme.end(), text.begin() + static_cast<std::ptrdiff_t>(begin),
             [](char wanted, char c) { return (c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c) == wanted; });
}

}  // namespace

std::vector<TextSpan> FindLinks(std::string_view text) {
  std::vector<TextSpan> links;
  std::size_t from = 0;  // what lies before is no part of a later link
  for (std::size_t slashes = text.find(kSlashes); slashes != std::string_view::npos;
       slashes = text.find(kSlashes, from)) {
    const std::string_view before = text.substr(from, slashes - from);
    const auto* scheme = std::find_if(kSchemes.begin(), kSchemes.end(),
                                      [&](std::string_view each) { return EndsWithScheme(before, each); });
    from = slashes + kSlashes.size();
    if (scheme == kSchemes.end()) {
      continue;
    }
    const std::size_t end = std::min(text.find_first_of(kWhiteSpace, from), text.size());
    if (end > from) {
      links.push_back({slashes - scheme->size(), end});
      from = end;
    }
  }
  return links;
}

}  // namespace kivandra
