// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace kivandra {

/// The code point of a byte in a one-byte code page, by the page's number (1252, 437, ..., 10000 for the old
/// Macintosh). Bytes below 0x80 are ASCII in every page. A byte that the page leaves open, or a page that is
/// not known, gives U+FFFD.
[[nodiscard]] char32_t CodePagePoint(int codePage, unsigned char byte);

}  // namespace kivandra
