// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <map>
#include <vector>

#include "support/code_pages.h"
#include "support/rich_text.h"
#include "support/rich_text_words.h"
#include "support/unicode.h"

namespace kivandra {

namespace {

constexpr int kDefaultCodePage = 1252;
constexpr std::size_t kMostFonts = 4096;
constexpr int kLargestNumber = 1 << 30;

bool IsAsciiLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool IsAsciiDigit(char c) { return c >= '0' && c <= '9'; }

/// The value of a hexadecimal digit, or -1.
int HexValue(char c) {
  if (IsAsciiDigit(c)) {
    return c - '0';
  }
  if (c >= 'a' && c <= 'f') {
    return c - 'a' + 10;
  }
  return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

/// What a group has set and its end takes back.
struct Group {
  bool hidden = false;     // its content is no text of the document
  bool fontTable = false;  // it, or a group around it, is the table of fonts
  int fallback = 1;        // characters behind \u that stand for it
  int font = -1;           // -1: the document's own code page
};

class Reader {
 public:
  explicit Reader(std::string_view bytes) : bytes_(bytes) {}

  std::optional<std::string> Read();

 private:
  void Open();
  void Close();
  void Escape();
  void Word();
  void Symbol(char symbol);
  void Apply(std::string_view word, bool numbered, int number);
  void FontTableWord(std::string_view word, int number);
  void SkipBinary(int length);
  void Byte(unsigned char byte);
  void Unit(char32_t unit);
  void Point(char32_t point);
  void Append(char32_t point);
  void Text(std::string_view text);
  void Paragraph();
  void DropHalf();
  /// Counts off what stands for the last \u; true if this character is one of those.
  bool IsFallback();
  [[nodiscard]] int CodePage() const;

  std::string_view bytes_;
  std::size_t at_ = 0;
  std::string text_;
  std::vector<Group> groups_;
  std::size_t tooDeep_ = 0;    // groups open beyond the depth
  bool ignorable_ = false;     // \* has just been read
  int toSkip_ = 0;             // fallback characters still to come
  char32_t half_ = 0;          // a high surrogate that waits for its other half
  std::size_t paragraph_ = 0;  // length of text_ behind the last paragraph end; 0: none
  int codePage_ = kDefaultCodePage;
  int defaultFont_ = -1;
  int fontBeingDefined_ = -1;
  std::map<int, int> fonts_;  // code page by the font's number
};

std::optional<std::string> Reader::Read() {
  if (bytes_.empty()) {
    return std::string();
  }
  for (const std::string_view head : {"{\\rtf", "{\\urtf"}) {
    if (bytes_.substr(0, head.size()) == head && bytes_.size() > head.size() &&
        !IsAsciiLetter(bytes_[head.size()]) && bytes_.size() <= kRichTextBytes) {
      at_ = 1;
      groups_.emplace_back();
      break;
    }
  }
  if (groups_.empty()) {
    return std::nullopt;
  }
  text_.reserve(bytes_.size());
  while (at_ < bytes_.size() && !groups_.empty()) {
    const char c = bytes_[at_++];
    switch (c) {
      case '{':
        Open();
        break;
      case '}':
        Close();
        break;
      case '\\':
        Escape();
        break;
      case '\r':
      case '\n':
      case '\0':
        break;
      default:
        Byte(static_cast<unsigned char>(c));
    }
  }
  DropHalf();
  if (paragraph_ != 0 && paragraph_ == text_.size()) {
    text_.pop_back();
  }
  return std::move(text_);
}

void Reader::Open() {
  toSkip_ = 0;
  ignorable_ = false;
  if (tooDeep_ > 0 || groups_.size() >= kRichTextDepth) {
    ++tooDeep_;
  } else {
    groups_.push_back(groups_.back());
  }
}

void Reader::Close() {
  toSkip_ = 0;
  ignorable_ = false;
  if (tooDeep_ > 0) {
    --tooDeep_;
  } else {
    groups_.pop_back();
  }
}

void Reader::Escape() {
  if (at_ >= bytes_.size()) {
    return;
  }
  if (IsAsciiLetter(bytes_[at_])) {
    Word();
  } else {
    Symbol(bytes_[at_++]);
  }
}

void Reader::Word() {
  const std::size_t begin = at_;
  while (at_ < bytes_.size() && IsAsciiLetter(bytes_[at_])) {
    ++at_;
  }
  const std::string_view word = bytes_.substr(begin, at_ - begin);
  const bool negative = at_ + 1 < bytes_.size() && bytes_[at_] == '-' && IsAsciiDigit(bytes_[at_ + 1]);
  at_ += negative ? 1 : 0;
  const bool numbered = at_ < bytes_.size() && IsAsciiDigit(bytes_[at_]);
  int number = 0;
  for (; at_ < bytes_.size() && IsAsciiDigit(bytes_[at_]); ++at_) {
    number = number >= kLargestNumber / 10 ? kLargestNumber : number * 10 + (bytes_[at_] - '0');
  }
  if (at_ < bytes_.size() && bytes_[at_] == ' ') {
    ++at_;  // it belongs to the word
  }
  if (word == "bin") {
    SkipBinary(numbered && !negative ? number : 0);
    return;
  }
  if (tooDeep_ > 0 || IsFallback()) {
    return;
  }
  Apply(word, numbered, negative ? -number : number);
}

void Reader::SkipBinary(int length) {
  at_ += std::min(static_cast<std::size_t>(length), bytes_.size() - at_);
  (void)IsFallback();
}

void Reader::Symbol(char symbol) {
  switch (symbol) {
    case '\'': {
      const int high = at_ < bytes_.size() ? HexValue(bytes_[at_]) : -1;
      const int low = at_ + 1 < bytes_.size() ? HexValue(bytes_[at_ + 1]) : -1;
      if (high >= 0 && low >= 0) {
        at_ += 2;
        Byte(static_cast<unsigned char>(high * 16 + low));
      }
      return;
    }
    case '*':
      ignorable_ = true;
      return;
    case '\\':
    case '{':
    case '}':
      Byte(static_cast<unsigned char>(symbol));
      return;
    case '~':
      Point(0x00A0);  // a blank that does not break
      return;
    case '-':
      Point(0x00AD);  // a hyphen for a break
      return;
    case '_':
      Point(0x2011);  // a hyphen that does not break
      return;
    case '\t':
      Point('\t');
      return;
    case '\r':
    case '\n':
      if (symbol == '\r' && at_ < bytes_.size() && bytes_[at_] == '\n') {
        ++at_;
      }
      if (!IsFallback()) {
        Paragraph();
      }
      return;
    default:
      (void)IsFallback();
  }
}

void Reader::Apply(std::string_view word, bool numbered, int number) {
  Group& group = groups_.back();
  if (ignorable_) {
    ignorable_ = false;
    group.hidden = true;  // nothing that is marked so holds text of the document
  }
  if (word == "fonttbl") {
    group.fontTable = true;
  }
  if (OpensHiddenGroup(word)) {
    group.hidden = true;
  } else if (word == "u" && numbered) {
    Unit(static_cast<char32_t>(number < 0 ? number + 0x10000 : number));
    toSkip_ = group.fallback;
  } else if (word == "uc" && numbered) {
    group.fallback = std::max(number, 0);
  } else if (group.fontTable) {
    FontTableWord(word, number);
  } else if (word == "f" && numbered) {
    group.font = number;
  } else if (word == "plain") {
    group.font = defaultFont_;
  } else if (word == "deff" && numbered) {
    defaultFont_ = number;
    group.font = number;
  } else if (word == "ansicpg" && numbered) {
    codePage_ = number == 0 ? kDefaultCodePage : number;
  } else if (word == "mac") {
    codePage_ = 10000;
  } else if (word == "pc") {
    codePage_ = 437;
  } else if (word == "pca") {
    codePage_ = 850;
  } else if (word == "par" || word == "sect") {
    Paragraph();
  } else {
    Text(TextOfControlWord(word));
  }
}

void Reader::FontTableWord(std::string_view word, int number) {
  if (word == "f") {
    fontBeingDefined_ = number;
    return;
  }
  const int page = word == "fcharset" ? CodePageOfCharset(number) : word == "cpg" ? number : 0;
  if (page != 0 && fonts_.size() < kMostFonts) {
    fonts_[fontBeingDefined_] = page;
  }
}

int Reader::CodePage() const {
  const auto found = fonts_.empty() ? fonts_.end() : fonts_.find(groups_.back().font);
  return found == fonts_.end() ? codePage_ : found->second;
}

void Reader::Byte(unsigned char byte) {
  constexpr unsigned char kUpperHalf = 0x80;
  Point(byte < kUpperHalf ? byte : CodePagePoint(CodePage(), byte));
}

bool Reader::IsFallback() {
  if (toSkip_ > 0) {
    --toSkip_;
    return true;
  }
  return false;
}

void Reader::Unit(char32_t unit) {
  if (groups_.back().hidden) {
    return;
  }
  const bool low = unit >= 0xDC00 && unit <= 0xDFFF;
  if (half_ != 0 && low) {
    const char32_t point = 0x10000 + ((half_ - 0xD800) << 10U) + (unit - 0xDC00);
    half_ = 0;
    Append(point);
    return;
  }
  DropHalf();
  if (unit >= 0xD800 && unit <= 0xDBFF) {
    half_ = unit;
  } else {
    Append(low || unit > 0x10FFFF ? kReplacementCharacter : unit);
  }
}

void Reader::Point(char32_t point) {
  ignorable_ = false;
  if (tooDeep_ > 0 || IsFallback() || groups_.back().hidden) {
    return;
  }
  DropHalf();
  Append(point);
}

void Reader::Text(std::string_view text) {
  if (!text.empty() && !groups_.back().hidden) {
    DropHalf();
    text_ += text;
  }
}

void Reader::Paragraph() {
  if (tooDeep_ > 0 || groups_.back().hidden) {
    return;
  }
  DropHalf();
  text_.push_back('\n');
  paragraph_ = text_.size();
}

void Reader::DropHalf() {
  if (half_ != 0) {
    half_ = 0;
    Append(kReplacementCharacter);
  }
}

void Reader::Append(char32_t point) {
  if (point < 0x80) {
    text_.push_back(static_cast<char>(point));
    return;
  }
  const auto tail = [&](unsigned shift) {
    text_.push_back(static_cast<char>(0x80U | ((point >> shift) & 0x3FU)));
  };
  if (point < 0x800) {
    text_.push_back(static_cast<char>(0xC0U | (point >> 6U)));
  } else if (point < 0x10000) {
    text_.push_back(static_cast<char>(0xE0U | (point >> 12U)));
    tail(6);
  } else {
    text_.push_back(static_cast<char>(0xF0U | (point >> 18U)));
    tail(12);
    tail(6);
  }
  tail(0);
}

}  // namespace

std::optional<std::string> ReadRichText(std::string_view bytes) { return Reader(bytes).Read(); }

}  // namespace kivandra
