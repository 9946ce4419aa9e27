// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>

namespace kivandra {

/// Number of rows that FillBadWords writes.
inline constexpr std::size_t kBuiltInRows = 101;

/// Writes the built-in rows 1 to 101 of BadWords, in order, and leaves the other rows alone. Cannot fail.
void FillBadWords();

}  // namespace kivandra
