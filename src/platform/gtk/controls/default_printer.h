// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace kivandra::gtk {

/// The error number of printing that fails.
inline constexpr long kPrinterError = 482;

/// Name of the default printer, or of any if none is the default. The toolkit's own search never ends where
/// the print service does not answer, so this one has its time. Events run inside. Throws PlatformError if
/// there is none.
[[nodiscard]] std::string FindPrinter();

}  // namespace kivandra::gtk
