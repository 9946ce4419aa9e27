// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kivandra::linux_impl {

/// The form in which names are compared: every character folded one to one without regard to its case, in
/// every script and in every locale alike. Bytes that are no UTF-8 stand for themselves.
std::string FoldName(std::string_view name);

/// Number of characters of a UTF-8 text; a byte that is no UTF-8 counts as one.
std::size_t CountCharacters(std::string_view name);

/// The text before its first zero byte: a name ends there, as in every call that takes a C string.
std::string_view UpToZero(std::string_view text);

/// The parts of a path between backslashes, empty ones left out. They point into `path`.
std::vector<std::string_view> SplitPath(std::string_view path);

}  // namespace kivandra::linux_impl
