// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace kivandra {

/// Groups inside one another beyond this depth are passed over by the reader.
inline constexpr std::size_t kRichTextDepth = 256;
/// A longer document is not read.
inline constexpr std::size_t kRichTextBytes = std::size_t{1} << 30U;

/// A rich text document, in ASCII and one font, that stands for this text. Every line end (CR LF, CR, LF) is
/// a paragraph end, a tab is a tab, any other control character and every invalid byte of the UTF-8 is
/// U+FFFD. ReadRichText gives the text back, with LF for each line end. Linear time.
[[nodiscard]] std::string WriteRichText(std::string_view utf8);

/// The plain text of a rich text document, in UTF-8 with LF line ends, or nothing if the bytes are no rich
/// text. Whatever the bytes are, it ends in linear time and throws nothing but std::bad_alloc.
///
/// Read: paragraphs, lines and cells, tabs, the special characters, \u with its fallback, \'xx by the font's
/// or the document's code page (one-byte pages; otherwise U+FFFD). Passed over: tables of fonts, colours and
/// styles, pictures, headers and footers, every destination marked as one to be ignored, binary data, all
/// formatting. The paragraph end behind the last text belongs to the document, not to the text. No bytes at
/// all are an empty document; one that breaks off is read as far as it goes.
[[nodiscard]] std::optional<std::string> ReadRichText(std::string_view bytes);

}  // namespace kivandra
