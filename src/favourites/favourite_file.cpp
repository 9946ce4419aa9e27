// SPDX-License-Identifier: GPL-3.0-or-later
#include "favourites/favourite_file.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "support/code_pages.h"
#include "support/unicode.h"

namespace kivandra {
namespace {

constexpr std::string_view kEnding = ".url";
constexpr std::string_view kKey = "URL=";
constexpr int kAnsiCodePage = 1252;
/// A file name of this system has at most 255 bytes; the ending, and the mark of a file that is not yet
/// written to its end, need their room.
constexpr std::size_t kLongestName = 200;

char Small(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; }

/// Where ".url" stands in the text, in any case, or npos.
std::size_t FindEnding(std::string_view text) {
  const auto at = std::search(text.begin(), text.end(), kEnding.begin(), kEnding.end(),
                              [](char one, char other) { return Small(one) == other; });
  return at == text.end() ? std::string_view::npos : static_cast<std::size_t>(at - text.begin());
}

bool IsUtf8(std::string_view text) {
  constexpr std::string_view kMark = "\xEF\xBF\xBD";  // the replacement character, written out
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t from = at;
    if (DecodeUtf8(text, at) == kReplacementCharacter && text.substr(from, at - from) != kMark) {
      return false;
    }
  }
  return true;
}

void Append(std::string& text, char32_t point) {
  if (point < 0x80) {
    text += static_cast<char>(point);
  } else if (point < 0x800) {
    text += static_cast<char>(0xC0U | point >> 6U);
    text += static_cast<char>(0x80U | (point & 0x3FU));
  } else {  // a code page has nothing above U+FFFF
    text += static_cast<char>(0xE0U | point >> 12U);
    text += static_cast<char>(0x80U | (point >> 6U & 0x3FU));
    text += static_cast<char>(0x80U | (point & 0x3FU));
  }
}

std::string AsUtf8(std::string_view line) {
  if (IsUtf8(line)) {
    return std::string(line);
  }
  std::string text;
  for (const char byte : line) {
    Append(text, CodePagePoint(kAnsiCodePage, static_cast<unsigned char>(byte)));
  }
  return text;
}

/// The text with every character that a file name can't bear on some system made an underscore.
std::string WithoutMarks(std::string_view text) {
  constexpr std::string_view kMarks = "/\\:*?\"<>|";
  std::string name;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t from = at;
    const char32_t point = DecodeUtf8(text, at);
    const bool plain = point >= 0x20 && point != 0x7F && point != kReplacementCharacter &&
                       (point >= 0x80 || kMarks.find(static_cast<char>(point)) == std::string_view::npos);
    if (plain) {
      name += text.substr(from, at - from);
    } else {
      name += '_';
    }
  }
  return name;
}

/// Without dots and blanks at the ends: a leading dot hides a file, others get lost on other systems.
std::string Trimmed(const std::string& name) {
  constexpr const char* kEnds = ". ";
  const std::size_t first = name.find_first_not_of(kEnds);
  return first == std::string::npos ? std::string()
                                    : name.substr(first, name.find_last_not_of(kEnds) + 1 - first);
}

/// Cut to `length` bytes, never inside of a character.
std::string CutAt(const std::string& name, std::size_t length) {
  std::size_t end = std::min(length, name.size());
  while (end > 0 && end < name.size() && (static_cast<unsigned char>(name[end]) & 0xC0U) == 0x80U) {
    --end;
  }
  return name.substr(0, end);
}

/// A name that means a device on other systems, whatever follows its first dot.
bool IsDevice(const std::string& name) {
  constexpr std::array<std::string_view, 4> kPlain{"con", "prn", "aux", "nul"};
  std::string stem = Trimmed(name.substr(0, name.find('.')));
  std::transform(stem.begin(), stem.end(), stem.begin(), Small);
  if (std::find(kPlain.begin(), kPlain.end(), stem) != kPlain.end()) {
    return true;
  }
  return stem.size() == 4 && (stem.starts_with("com") || stem.starts_with("lpt")) && stem[3] >= '1' &&
         stem[3] <= '9';
}

}  // namespace

std::optional<std::string> FavoriteTitle(std::string_view fileName) {
  const std::size_t end = FindEnding(fileName);
  return end == std::string_view::npos ? std::nullopt : std::optional<std::string>(fileName.substr(0, end));
}

std::optional<std::string> FavoriteURL(std::string_view file) {
  for (std::size_t at = 0; at < file.size();) {
    const std::size_t end = std::min(file.find_first_of("\r\n", at), file.size());
    const std::string_view line = file.substr(at, end - at);
    if (line.starts_with(kKey)) {
      return AsUtf8(line.substr(kKey.size()));
    }
    // The two characters of one line end make an empty line between them, which starts with nothing.
    at = end + 1;
  }
  return std::nullopt;
}

std::string SafeFileName(std::string_view text) {
  std::string name = Trimmed(CutAt(Trimmed(WithoutMarks(text)), kLongestName));
  for (std::size_t at = FindEnding(name); at != std::string_view::npos; at = FindEnding(name)) {
    name[at] = '_';
  }
  if (name.empty()) {
    name = "Favorite";
  }
  if (IsDevice(name)) {
    name.insert(0, "_");
  }
  return name;
}

std::string FavoriteFileName(std::string_view title) {
  // Who types the ending too does not want it twice.
  const bool ended = title.size() >= kEnding.size() &&
                     FindEnding(title.substr(title.size() - kEnding.size())) != std::string_view::npos;
  return SafeFileName(ended ? title.substr(0, title.size() - kEnding.size()) : title).append(kEnding);
}

}  // namespace kivandra
