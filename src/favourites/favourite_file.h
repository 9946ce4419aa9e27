// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kivandra {

// A favourite is a file whose name holds ".url"; its title is the name up to there, its address the rest of
// the first line that starts with "URL=".

/// How many folders below the favourites folder are entered; the folder itself is the first.
inline constexpr int kDeepestFavoritesFolder = 100;

/// The title of the favourite of this file name, or nothing if the file is none. The ".url" counts in any
/// case; the title keeps its own.
[[nodiscard]] std::optional<std::string> FavoriteTitle(std::string_view fileName);

/// The address in a favourite's file, or nothing if no line starts with "URL=" in this very case. Lines end
/// with CR, LF or both. Sections are not looked at. Bytes that are not UTF-8 are read as code page 1252.
[[nodiscard]] std::optional<std::string> FavoriteURL(std::string_view file);

/// A name of a file or folder that every system takes, made of what a person or a page has written: no
/// slashes, no marks that name several files, no control characters, no dot or blank at either end, no name
/// of a device, at most 200 bytes, never empty. It holds no ".url", which would cut the title.
[[nodiscard]] std::string SafeFileName(std::string_view text);

/// The file name of a favourite with this title.
[[nodiscard]] std::string FavoriteFileName(std::string_view title);

}  // namespace kivandra
