// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>

#include "filter/table.h"

namespace kivandra {

// The process-wide values of the filter: plain values, read and written directly, on the one thread.

/// Forbidden words and addresses: case-sensitive substrings of an address, whole words of a page in any case.
/// Grows only: the built-in rows, the disallowed list, what the panel adds.
inline BadWordsTable BadWords;
/// Substrings of an address that outrank BadWords. Grows only: the allowed list, session grants.
inline AllowedDomainsTable AllowedDomains;
/// Address of the last block; it keeps its value when SessionAllowPending goes back to false.
inline std::string BlockedURL;
/// The address for which the session lock asks at this moment, if it does: that one is granted, whatever is
/// blocked while the question stands.
inline std::optional<std::string> AskedURL;
/// The gate's last run ended in a block.
inline bool SessionAllowPending = false;
/// Raised only while the Back command calls GoBack, and only if the parent's setting says so.
inline bool BackBypass = false;

/// Puts every value back to what it is at the start of a process.
void ResetFilterValues();

}  // namespace kivandra
