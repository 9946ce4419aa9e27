// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <glibmm/ustring.h>

#include <cstddef>
#include <string>

namespace kivandra::gtk {

/// How many characters of a text a caption, a label or a status bar shows; laying out more would hold the
/// window up.
inline constexpr std::size_t kShownCharacters = 400;

/// The text as widgets need it: invalid UTF-8 and NUL characters become U+FFFD.
[[nodiscard]] Glib::ustring ValidText(const std::string& text);
/// The same for one line of at most `characters` characters; a text that is cut ends in an ellipsis.
[[nodiscard]] Glib::ustring ShownText(const std::string& text, std::size_t characters = kShownCharacters);

}  // namespace kivandra::gtk
