// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/routing.h"

#include <algorithm>
#include <initializer_list>

#include "hosts.h"

namespace kivandra {
namespace {

std::string Join(std::initializer_list<std::string_view> pieces) {
  std::size_t size = 0;
  for (const std::string_view piece : pieces) {
    size += piece.size();
  }
  std::string joined;
  joined.reserve(size);
  for (const std::string_view piece : pieces) {
    joined += piece;
  }
  return joined;
}

std::string QuestionURL(std::string_view host, std::string_view text) {
  return Join(
      {"http://", host, "/main/askjeeves.asp?ask=", text, "&origin=0&site_name=Jeeves&metasearch=yes"});
}

/// A table of words for looking one up; the order of the words plays no part in that.
template <std::size_t kSize>
class WordTable {
 public:
  constexpr explicit WordTable(const std::array<std::string_view, kSize>& words) : words_(words) {
    std::sort(words_.begin(), words_.end());
    for (const std::string_view word : words_) {
      longest_ = std::max(longest_, word.size());
    }
  }
  [[nodiscard]] constexpr bool HasNoWordTwice() const {
    return std::adjacent_find(words_.begin(), words_.end()) == words_.end();
  }
  [[nodiscard]] bool Exists(std::string_view word) const {
    return !word.empty() && word.size() <= longest_ && std::binary_search(words_.begin(), words_.end(), word);
  }

 private:
  std::array<std::string_view, kSize> words_;
  std::size_t longest_ = 0;
};

constexpr WordTable kEnglish(kEnglishQuestionWords);
constexpr WordTable kSpanish(kSpanishQuestionWords);
static_assert(kEnglish.HasNoWordTwice() && kSpanish.HasNoWordTwice());

/// Capitals of A to Z made small. No letter outside ASCII is the capital of one that we look for, so in UTF-8
/// this is all that ignoring case means here.
constexpr char Small(char letter) {
  return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

/// Whether `part`, in any case, stands in `text` at `at`. `part` is in small letters.
bool StandsAt(std::string_view text, std::size_t at, std::string_view part) {
  return at <= text.size() && text.size() - at >= part.size() &&
         std::equal(part.begin(), part.end(), text.begin() + static_cast<std::ptrdiff_t>(at),
                    [](char wanted, char given) { return wanted == Small(given); });
}

/// Whether `part`, in any case, stands anywhere in `text`. Its character at `mark`, one that has no case,
/// leads from one place to look at to the next.
bool Contains(std::string_view text, std::string_view part, std::size_t mark) {
  for (std::size_t at = text.find(part[mark]); at != std::string_view::npos;
       at = text.find(part[mark], at + 1)) {
    if (at >= mark && StandsAt(text, at - mark, part)) {
      return true;
    }
  }
  return false;
}

bool HasDomainEnding(std::string_view text) {
  for (std::size_t at = text.find('.'); at != std::string_view::npos; at = text.find('.', at + 1)) {
    if (StandsAt(text, at, ".net") || StandsAt(text, at, ".com") || StandsAt(text, at, ".org")) {
      return true;
    }
  }
  return false;
}

/// Whether one of the words between single blanks is in the table.
template <std::size_t kSize>
bool HasWordOf(const WordTable<kSize>& table, std::string_view text) {
  for (;;) {
    const std::size_t blank = text.find(' ');
    if (table.Exists(text.substr(0, blank))) {
      return true;
    }
    if (blank == std::string_view::npos) {
      return false;
    }
    text.remove_prefix(blank + 1);
  }
}

}  // namespace

std::string WordSearchURL(std::string_view text) {
  return Join({"http://", hosts::kWordSearchHost, "/search?q=", text});
}

std::string EnglishQuestionURL(std::string_view text) {
  return QuestionURL(hosts::kEnglishQuestionHost, text);
}

std::string SpanishQuestionURL(std::string_view text) {
  return QuestionURL(hosts::kSpanishQuestionHost, text);
}

std::string HotKeySearchURL(std::string_view text) {
  return Join({"http://", hosts::kHotKeySearchHost, "/bin/search?p=", text});
}

std::string getURL(std::string_view text) {
  // 1. The tables are constant, and each search address is made where it is the answer.
  // 2. Nothing typed: the product's home page.
  if (text.empty()) {
    return std::string(hosts::kProductHome);
  }
  const bool hasScheme = Contains(text, "http://", 4);
  const bool hasEnding = HasDomainEnding(text);
  // 3. "www.": an address, if it has a domain ending too.
  if (Contains(text, "www.", 3)) {
    if (!hasEnding) {
      return WordSearchURL(text);
    }
    return hasScheme ? std::string(text) : Join({"http://", text});
  }
  // 4. A full address, with or without a domain ending.
  if (hasScheme) {
    return std::string(text);
  }
  // 5. kept on purpose: the ending decides before any question does, so a sentence with ".com" in it becomes
  // an address that leads nowhere.
  if (hasEnding) {
    return Join({"http://www.", text});
  }
  // 6. One word alone is searched for, whatever word it is.
  if (text.find(' ') == std::string_view::npos) {
    return WordSearchURL(text);
  }
  // A word of the English table overrides one of the Spanish table.
  if (HasWordOf(kEnglish, text)) {
    return EnglishQuestionURL(text);
  }
  if (HasWordOf(kSpanish, text)) {
    return SpanishQuestionURL(text);
  }
  return WordSearchURL(text);
}

}  // namespace kivandra
