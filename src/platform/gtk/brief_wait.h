// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace kivandra::gtk {

/// Runs events until `done` becomes true, a second at the most: for an answer that comes from outside and may
/// never come. The answer may also come later, so it must not write into what ends with the caller.
void WaitBriefly(const bool& done);

}  // namespace kivandra::gtk
