// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "platform/rich_text_box.h"

namespace kivandra::gtk {

/// A text with its links, which several readers share while it is shown and printed.
struct LinkedText {
  std::string text;
  std::vector<TextSpan> links;
};

/// Part of a link that a piece shows; characters of the piece, not bytes.
struct ShownLink {
  int begin = 0;
  int end = 0;
  std::size_t link = 0;  // its number in the text
};

/// One paragraph as it is laid out: valid UTF-8 without a break.
struct TextPiece {
  std::string words;
  int characters = 0;
  std::vector<ShownLink> links;
};

/// A place between two pieces.
struct PiecePlace {
  std::size_t byte = 0;
  std::size_t link = 0;  // the first link that does not end before it
};

/// Longest paragraph in bytes. Laying a paragraph out takes time that grows with it, and cannot be divided.
inline constexpr std::size_t kLongestPiece = 8192;

/// The piece at `place`, which moves behind it; false at the text's end. A paragraph that is too long is
/// broken at a blank that stands in no link, or else at any blank, or else between two characters; the blank
/// is not shown, as it is not at the end of a wrapped line. Invalid bytes and NULs become U+FFFD.
[[nodiscard]] bool NextPiece(const LinkedText& text, PiecePlace& place, TextPiece& piece);

}  // namespace kivandra::gtk
