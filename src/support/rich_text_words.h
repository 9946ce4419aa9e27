// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string_view>

namespace kivandra {

/// The text that a control word stands for by itself ("emdash", "tab", "line"), empty if for none.
[[nodiscard]] std::string_view TextOfControlWord(std::string_view word);

/// Whether the word opens a group whose content is no text of the document: a table, a picture, a header.
[[nodiscard]] bool OpensHiddenGroup(std::string_view word);

/// The code page of a font's character set by its number in wingdi.h; 0 if the document's own counts.
[[nodiscard]] int CodePageOfCharset(int charset);

}  // namespace kivandra
