// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace kivandra {

// The process-wide values of the panel, both set when the parent chooses a date; no number is padded.

inline std::string LogDateCaption;  ///< day, month and year with slashes
/// Day, month and year run together. kept on purpose: some dates share a key (11 January, 1 November).
inline std::string LogDateKey;

/// Puts every value back to what it is at the start of a process.
inline void ResetPanelValues() {
  LogDateCaption.clear();
  LogDateKey.clear();
}

}  // namespace kivandra
