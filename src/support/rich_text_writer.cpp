// SPDX-License-Identifier: GPL-3.0-or-later
#include <charconv>

#include "support/rich_text.h"
#include "support/unicode.h"

namespace kivandra {

namespace {

constexpr std::string_view kHead =
    "{\\rtf1\\ansi\\ansicpg1252\\deff0\\uc1{\\fonttbl{\\f0\\fnil\\fcharset0 DejaVu "
    "Sans;}}\r\n\\pard\\f0\\fs20 ";
constexpr std::string_view kTail = "\\par\r\n}\r\n";

constexpr char32_t kFirstAstral = 0x10000;
constexpr char32_t kDelete = 0x7F;
constexpr char32_t kEndOfControls = 0xA0;

/// One UTF-16 unit, as a signed number, with "?" for readers that don't know it.
void WriteUnit(std::string& document, char32_t unit) {
  char digits[8];
  const int number = unit > 0x7FFF ? static_cast<int>(unit) - 0x10000 : static_cast<int>(unit);
  const auto end = std::to_chars(std::begin(digits), std::end(digits), number).ptr;
  document.append("\\u").append(digits, end).push_back('?');
}

void WritePoint(std::string& document, char32_t point) {
  const bool control = point < ' ' || (point >= kDelete && point < kEndOfControls);
  if (control) {
    WriteUnit(document, kReplacementCharacter);
  } else if (point < kFirstAstral) {
    WriteUnit(document, point);
  } else {
    WriteUnit(document, 0xD800 + ((point - kFirstAstral) >> 10U));
    WriteUnit(document, 0xDC00 + ((point - kFirstAstral) & 0x3FFU));
  }
}

}  // namespace

std::string WriteRichText(std::string_view utf8) {
  std::string document;
  document.reserve(kHead.size() + utf8.size() + utf8.size() / 4 + kTail.size());
  document += kHead;
  for (std::size_t at = 0; at < utf8.size();) {
    const char c = utf8[at];
    switch (c) {
      case '\\':
      case '{':
      case '}':
        document.push_back('\\');
        document.push_back(c);
        ++at;
        break;
      case '\t':
        document += "\\tab ";
        ++at;
        break;
      case '\r':
      case '\n':
        document += "\\par\r\n";
        at += c == '\r' && at + 1 < utf8.size() && utf8[at + 1] == '\n' ? 2 : 1;
        break;
      default:
        if (c >= ' ' && c < static_cast<char>(kDelete)) {
          document.push_back(c);
          ++at;
        } else {
          WritePoint(document, DecodeUtf8(utf8, at));
        }
    }
  }
  document += kTail;
  return document;
}

}  // namespace kivandra
