// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/rich_text_words.h"

#include <algorithm>
#include <array>
#include <utility>

namespace kivandra {

std::string_view TextOfControlWord(std::string_view word) {
  using Entry = std::pair<std::string_view, std::string_view>;
  static constexpr std::array<Entry, 17> kTexts = {{
      {"bullet", "\u2022"},
      {"cell", "\t"},
      {"column", "\n"},
      {"emdash", "\u2014"},
      {"emspace", "\u2003"},
      {"endash", "\u2013"},
      {"enspace", "\u2002"},
      {"ldblquote", "\u201C"},
      {"line", "\n"},
      {"lquote", "\u2018"},
      {"nestcell", "\t"},
      {"page", "\n"},
      {"qmspace", "\u2005"},
      {"rdblquote", "\u201D"},
      {"row", "\n"},
      {"rquote", "\u2019"},
      {"tab", "\t"},
  }};
  const auto* found =
      std::lower_bound(kTexts.begin(), kTexts.end(), word,
                       [](const Entry& entry, std::string_view w) { return entry.first < w; });
  return found != kTexts.end() && found->first == word ? found->second : std::string_view();
}

bool OpensHiddenGroup(std::string_view word) {
  static constexpr std::array<std::string_view, 27> kHidden = {
      "annotation", "author",  "colortbl",   "comment", "datafield", "fldinst", "fonttbl",
      "footer",     "footerf", "footerl",    "footerr", "footnote",  "ftncn",   "ftnsep",
      "ftnsepc",    "header",  "headerf",    "headerl", "headerr",   "info",    "keywords",
      "nonshppict", "pict",    "stylesheet", "tc",      "title",     "xe"};
  return std::binary_search(kHidden.begin(), kHidden.end(), word);
}

int CodePageOfCharset(int charset) {
  switch (charset) {
    case 77:  // MAC_CHARSET
      return 10000;
    case 128:  // SHIFTJIS_CHARSET
      return 932;
    case 129:  // HANGUL_CHARSET
      return 949;
    case 134:  // GB2312_CHARSET
      return 936;
    case 136:  // CHINESEBIG5_CHARSET
      return 950;
    case 161:  // GREEK_CHARSET
      return 1253;
    case 162:  // TURKISH_CHARSET
      return 1254;
    case 163:  // VIETNAMESE_CHARSET
      return 1258;
    case 177:  // HEBREW_CHARSET
      return 1255;
    case 178:  // ARABIC_CHARSET
      return 1256;
    case 186:  // BALTIC_CHARSET
      return 1257;
    case 204:  // RUSSIAN_CHARSET
      return 1251;
    case 222:  // THAI_CHARSET
      return 874;
    case 238:  // EASTEUROPE_CHARSET
      return 1250;
    case 255:  // OEM_CHARSET
      return 437;
    default:
      return 0;
  }
}

}  // namespace kivandra
