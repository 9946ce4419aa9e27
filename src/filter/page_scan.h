// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <string_view>

#include "filter/table.h"

namespace kivandra {

/// The last row that the page scan looks at. kept on purpose: the table has one more, which serves the scan
/// of addresses only.
inline constexpr std::size_t kLastScannedRow = BadWordsTable::kLastRow - 1;

/// The page scan: whether the page's source holds a row of the table as a whole word, in any case, or is
/// empty. The rows up to the first empty one count, row kLastScannedRow at most; the meaning of a hit is
/// WordSearch's.
///
/// kept on purpose: it is the empty row behind the last word that finds the empty page. A table that is
/// filled up to kLastScannedRow has none, and then an empty page passes.
[[nodiscard]] bool PageScanFinds(std::string_view page, const BadWordsTable& badWords);

}  // namespace kivandra
