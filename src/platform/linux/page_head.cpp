// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/page_head.h"

#include <algorithm>
#include <cctype>
#include <map>

namespace kivandra::linux_impl {
namespace {

/// Up to here a declaration counts wherever it stands.
constexpr std::size_t kAlwaysSearched = 1024;
/// No head is longer than this.
constexpr std::size_t kMostSearched = 1024 * 1024;

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\f' || c == '\r'; }

char LowerLetter(char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); }

bool IsLetter(char c) { return std::isalpha(static_cast<unsigned char>(c)) != 0; }

bool BeginsWithWord(std::string_view text, std::string_view lowerWord) {
  return text.size() >= lowerWord.size() &&
         std::equal(lowerWord.begin(), lowerWord.end(), text.begin(),
                    [](char expected, char c) { return LowerLetter(c) == expected; });
}

std::size_t FindWord(std::string_view text, std::string_view lowerWord, std::size_t from) {
  for (std::size_t at = from; at + lowerWord.size() <= text.size(); ++at) {
    if (BeginsWithWord(text.substr(at), lowerWord)) return at;
  }
  return std::string_view::npos;
}

std::string_view SkipBlanks(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  return text;
}

/// The value behind the first "charset" that is followed by an equals sign.
std::string CharsetBehindName(std::string_view text) {
  for (std::size_t at = FindWord(text, "charset", 0); at != std::string_view::npos;
       at = FindWord(text, "charset", at + 7)) {
    std::string_view rest = SkipBlanks(text.substr(at + 7));
    if (rest.empty() || rest.front() != '=') continue;
    rest = SkipBlanks(rest.substr(1));
    if (rest.empty()) return {};
    if (rest.front() == '"' || rest.front() == '\'') {
      const std::size_t close = rest.find(rest.front(), 1);
      return close != std::string_view::npos ? std::string(rest.substr(1, close - 1)) : std::string();
    }
    return std::string(rest.substr(0, rest.find_first_of("; \t\n\f\r,")));
  }
  return {};
}

using Attributes = std::map<std::string, std::string>;

/// Reads a tag's attributes up to and with its closing bracket; `text` begins behind the tag's name and is
/// moved on.
Attributes ReadAttributes(std::string_view& text) {
  Attributes attributes;
  while (true) {
    while (!text.empty() && (IsBlank(text.front()) || text.front() == '/')) text.remove_prefix(1);
    if (text.empty()) return attributes;
    if (text.front() == '>') {
      text.remove_prefix(1);
      return attributes;
    }
    std::string name;
    do {
      name += LowerLetter(text.front());
      text.remove_prefix(1);
    } while (!text.empty() && !IsBlank(text.front()) && text.front() != '/' && text.front() != '>' &&
             text.front() != '=');
    std::string value;
    std::string_view rest = SkipBlanks(text);
    if (!rest.empty() && rest.front() == '=') {
      text = SkipBlanks(rest.substr(1));
      if (!text.empty() && (text.front() == '"' || text.front() == '\'')) {
        const std::size_t close = text.find(text.front(), 1);
        if (close == std::string_view::npos) {
          text = {};
          return {};
        }
        value = text.substr(1, close - 1);
        text.remove_prefix(close + 1);
      } else {
        while (!text.empty() && !IsBlank(text.front()) && text.front() != '>') {
          value += text.front();
          text.remove_prefix(1);
        }
      }
    }
    attributes.emplace(std::move(name), std::move(value));  // the first of a name counts
  }
}

std::string CharsetOfMeta(const Attributes& attributes) {
  if (const auto charset = attributes.find("charset"); charset != attributes.end()) return charset->second;
  const auto equivalent = attributes.find("http-equiv");
  const auto content = attributes.find("content");
  if (equivalent == attributes.end() || content == attributes.end()) return {};
  if (equivalent->second.size() != 12 || !BeginsWithWord(equivalent->second, "content-type")) return {};
  return CharsetBehindName(content->second);
}

bool BelongsInHead(const std::string& tag) {
  constexpr std::string_view kTags[] = {"html", "head",   "meta", "title",    "script",  "style",
                                        "link", "object", "base", "noscript", "template"};
  return std::find(std::begin(kTags), std::end(kTags), tag) != std::end(kTags);
}

/// Whether the tag's content is text alone up to its end tag.
bool HoldsPlainText(const std::string& tag) {
  return tag == "script" || tag == "style" || tag == "title" || tag == "textarea" || tag == "xmp" ||
         tag == "iframe" || tag == "noembed" || tag == "noframes" || tag == "noscript";
}

std::string XmlDeclaration(std::string_view bytes) {
  if (!bytes.starts_with("<?xml")) return {};
  const std::string_view declaration = bytes.substr(0, bytes.find('>'));
  const std::size_t at = declaration.find("encoding");
  if (at == std::string_view::npos) return {};
  std::string_view rest = SkipBlanks(declaration.substr(at + 8));
  if (rest.empty() || rest.front() != '=') return {};
  rest = SkipBlanks(rest.substr(1));
  if (rest.empty() || (rest.front() != '"' && rest.front() != '\'')) return {};
  const std::size_t close = rest.find(rest.front(), 1);
  return close != std::string_view::npos ? std::string(rest.substr(1, close - 1)) : std::string();
}

/// Moves `text`, which begins with "<!" or "<?", behind the comment or declaration.
void SkipDeclaration(std::string_view& text) {
  std::size_t end;
  if (text.starts_with("<!--")) {
    // "<!-->" and "<!--->" are whole comments.
    end = text.starts_with("<!-->") ? 2 : text.starts_with("<!--->") ? 3 : text.find("-->", 4);
    end = end == std::string_view::npos ? end : end + 3;
  } else {
    end = text.find('>');
    end = end == std::string_view::npos ? end : end + 1;
  }
  text.remove_prefix(std::min(end, text.size()));
}

}  // namespace

std::string CharsetParameter(std::string_view contentType) {
  const std::size_t parameters = contentType.find(';');
  return parameters != std::string_view::npos ? CharsetBehindName(contentType.substr(parameters))
                                              : std::string();
}

HeadCharsets CharsetsInHead(std::string_view bytes) {
  HeadCharsets found;
  found.xmlDeclaration = XmlDeclaration(bytes);
  std::string_view text = bytes.substr(0, kMostSearched);
  const std::size_t whole = text.size();
  while (true) {
    text.remove_prefix(std::min(text.find('<'), text.size()));
    if (text.size() < 2) return found;
    if (text[1] == '!' || text[1] == '?') {
      SkipDeclaration(text);
      continue;
    }
    const bool isEnd = text[1] == '/';
    text.remove_prefix(isEnd ? 2 : 1);
    if (text.empty() || !IsLetter(text.front())) continue;
    std::string tag;
    while (!text.empty() && !IsBlank(text.front()) && text.front() != '/' && text.front() != '>') {
      tag += LowerLetter(text.front());
      text.remove_prefix(1);
    }
    const Attributes attributes = ReadAttributes(text);
    if (!isEnd && tag == "meta") {
      found.meta = CharsetOfMeta(attributes);
      if (!found.meta.empty()) return found;
    }
    const std::size_t read = whole - text.size();
    if (read >= kAlwaysSearched && (!BelongsInHead(tag) || (isEnd && tag == "head"))) return found;
    if (!isEnd && HoldsPlainText(tag)) {
      text.remove_prefix(std::min(FindWord(text, "</" + tag, 0), text.size()));
    }
  }
}

}  // namespace kivandra::linux_impl
