// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/controls/rich_text_pieces.h"

#include <glib.h>

#include <algorithm>
#include <string_view>

namespace kivandra::gtk {
namespace {

/// Where a piece ends, and where the next one begins.
struct Break {
  std::size_t end;
  std::size_t next;
};

bool InLink(const LinkedText& text, std::size_t byte) {
  const auto after = std::upper_bound(text.links.begin(), text.links.end(), byte,
                                      [](std::size_t at, const TextSpan& link) { return at < link.begin; });
  return after != text.links.begin() && byte < std::prev(after)->end;
}

/// The last byte of [from, end) that does not go on with a character; `end` if there is none.
std::size_t CharacterStart(const std::string& text, std::size_t from, std::size_t end) {
  constexpr unsigned kContinuation = 0x80;  // 10xxxxxx
  constexpr unsigned kMask = 0xC0;
  for (std::size_t at = end; at > from && end - at < 4; --at) {
    if ((static_cast<unsigned char>(text[at]) & kMask) != kContinuation) {
      return at;
    }
  }
  return end;
}

Break BreakAfter(const LinkedText& linked, std::size_t from) {
  const std::string& text = linked.text;
  const std::size_t limit = from + kLongestPiece;
  const std::size_t line = std::string_view(text).substr(from, kLongestPiece + 1).find('\n');
  if (line != std::string::npos) {
    return {from + line, from + line + 1};
  }
  if (text.size() <= limit) {
    return {text.size(), text.size()};
  }
  std::size_t blank = std::string::npos;
  for (std::size_t at = limit; at > from; --at) {
    if (text[at] != ' ') {
      continue;
    }
    if (!InLink(linked, at)) {
      return {at, at + 1};
    }
    blank = blank == std::string::npos ? at : blank;
  }
  if (blank != std::string::npos) {
    return {blank, blank + 1};
  }
  const std::size_t cut = CharacterStart(text, from, limit);
  return {cut, cut};
}

/// Adds bytes as valid characters; gives back how many.
int Add(TextPiece& piece, std::string_view bytes) {
  char* valid = g_utf8_make_valid(bytes.data(), static_cast<gssize>(bytes.size()));
  const auto count = static_cast<int>(g_utf8_strlen(valid, -1));
  piece.words += valid;
  piece.characters += count;
  g_free(valid);
  return count;
}

}  // namespace

bool NextPiece(const LinkedText& linked, PiecePlace& place, TextPiece& piece) {
  const std::string_view text = linked.text;
  if (place.byte >= text.size()) {
    return false;
  }
  const Break cut = BreakAfter(linked, place.byte);
  piece = {};
  std::size_t done = place.byte;
  while (place.link < linked.links.size() && linked.links[place.link].begin < cut.end) {
    const TextSpan& link = linked.links[place.link];
    const std::size_t begin = std::max(link.begin, done);
    const std::size_t end = std::min(link.end, cut.end);
    Add(piece, text.substr(done, begin - done));
    const int first = piece.characters;
    if (end > begin && Add(piece, text.substr(begin, end - begin)) > 0) {
      piece.links.push_back({first, piece.characters, place.link});
    }
    done = std::max(begin, end);
    if (link.end > cut.next) {
      break;  // it goes on in the next piece
    }
    ++place.link;
  }
  Add(piece, text.substr(done, cut.end - done));
  place.byte = cut.next;
  return true;
}

}  // namespace kivandra::gtk
