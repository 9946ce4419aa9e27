// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/search_forwarders.h"

#include <fstream>

#include "platform/linux/percent_encoding.h"

namespace kivandra::linux_impl {
namespace {

/// Cuts `text` at the first `separator` and gives the part before it; without one, all of it.
std::string_view CutOff(std::string_view& text, char separator) {
  const std::size_t at = text.find(separator);
  const std::string_view part = text.substr(0, at);
  text = at == std::string_view::npos ? std::string_view{} : text.substr(at + 1);
  return part;
}

/// The first `limit` bytes at most, without a part of a UTF-8 character at the end.
std::string_view CutAtCharacter(std::string_view text, std::size_t limit) {
  if (text.size() <= limit) {
    return text;
  }
  const auto continues = [&](std::size_t at) {
    return (static_cast<unsigned char>(text[at]) & 0xC0U) == 0x80U;
  };
  std::size_t end = limit;
  while (end > 0 && continues(end)) {
    --end;
  }
  return text.substr(0, end);
}

/// The value of `key`, decoded as browsers encode a form: "+" is a blank.
std::string ValueOf(std::string_view query, std::string_view key) {
  while (!query.empty()) {
    std::string_view value = CutOff(query, '&');
    if (CutOff(value, '=') == key) {
      std::string text(value);
      for (char& c : text) {
        if (c == '+') {
          c = ' ';
        }
      }
      return PercentDecode(text);
    }
  }
  return {};
}

}  // namespace

SearchForwarders::SearchForwarders(const std::string& file) {
  std::ifstream stream(file);
  for (std::string line; std::getline(stream, line);) {
    std::string_view rest = line;
    if (rest.starts_with('#')) {
      continue;
    }
    const std::string_view service = CutOff(rest, '\t');
    const std::string_view path = CutOff(rest, '\t');
    const std::string_view key = CutOff(rest, '\t');
    if (!service.empty() && path.starts_with('/') && !key.empty() && rest.starts_with("https://")) {
      rows_.push_back({std::string(service), std::string(path), std::string(key), std::string(rest)});
    }
  }
}

std::optional<std::string> SearchForwarders::Forward(std::string_view service, std::string_view path,
                                                     std::string_view query) const {
  for (const Row& row : rows_) {
    if (row.path == path && (row.service == service || row.service == "*")) {
      const std::string text = ValueOf(query, row.key);
      return row.key == "-" ? row.address : row.address + PercentEncode(CutAtCharacter(text, kLongestText));
    }
  }
  return std::nullopt;
}

}  // namespace kivandra::linux_impl
