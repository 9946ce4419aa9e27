// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/page_charset.h"

#include <algorithm>
#include <cctype>

#include "platform/linux/page_charset_labels.h"
#include "platform/linux/page_head.h"

namespace kivandra::linux_impl {
namespace {

std::string Lower(std::string_view text) {
  std::string lower(text);
  std::transform(lower.begin(), lower.end(), lower.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return lower;
}

bool IsXmlType(std::string_view contentType) {
  const std::string type = Lower(contentType.substr(0, contentType.find_first_of("; \t")));
  return type == "text/xml" || type == "application/xml" || type.ends_with("+xml");
}

Charset MarkedCharset(std::string_view bytes) {
  if (bytes.starts_with("\xEF\xBB\xBF")) return kUtf8;
  if (bytes.starts_with("\xFF\xFE")) return kUtf16Le;
  if (bytes.starts_with("\xFE\xFF")) return kUtf16Be;
  return {};
}

/// A page can't be UTF-16 if its declaration can be read as ASCII.
Charset DeclaredInside(std::string_view label) {
  const Charset charset = CharsetOfLabel(label);
  if (charset == kUtf16Le || charset == kUtf16Be) return kUtf8;
  return charset == kUserDefined ? kWestern : charset;
}

void AddReading(std::vector<Charset>& readings, const Charset& charset) {
  if (!charset.empty() && std::find(readings.begin(), readings.end(), charset) == readings.end()) {
    readings.push_back(charset);
  }
}

}  // namespace

Charset CharsetOfLabel(std::string_view label) {
  constexpr std::string_view kBlanks = " \t\n\f\r";
  const std::size_t begin = label.find_first_not_of(kBlanks);
  if (begin == std::string_view::npos) return {};
  const std::size_t end = label.find_last_not_of(kBlanks);
  const std::string wanted = Lower(label.substr(begin, end - begin + 1));
  for (const CharsetLabels& row : kCharsetLabels) {
    std::string_view labels = row.labels;
    while (!labels.empty()) {
      const std::size_t blank = std::min(labels.find(' '), labels.size());
      if (labels.substr(0, blank) == wanted) return Charset(row.charset);
      labels.remove_prefix(std::min(blank + 1, labels.size()));
    }
  }
  return {};
}

std::vector<Charset> ReadingsOf(std::string_view bytes, std::string_view contentType) {
  if (const Charset marked = MarkedCharset(bytes); !marked.empty()) return {marked};
  if (const Charset declared = CharsetOfLabel(CharsetParameter(contentType)); !declared.empty())
    return {declared};
  const HeadCharsets head = CharsetsInHead(bytes);
  if (IsXmlType(contentType)) {
    const Charset declared = DeclaredInside(head.xmlDeclaration);
    return {declared.empty() ? kUtf8 : declared};
  }

  std::vector<Charset> readings;
  AddReading(readings, DeclaredInside(head.xmlDeclaration));
  AddReading(readings, DeclaredInside(head.meta));
  if (!readings.empty()) return readings;
  AddReading(readings, kWestern);
  const auto isBeyondAscii = [](char c) { return static_cast<unsigned char>(c) >= 0x80; };
  if (std::any_of(bytes.begin(), bytes.end(), isBeyondAscii)) AddReading(readings, kUtf8);
  if (bytes.find('\x1b') != std::string_view::npos) AddReading(readings, kIso2022Jp);
  return readings;
}

}  // namespace kivandra::linux_impl
