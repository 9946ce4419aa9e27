// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace kivandra::gtk {

/// Starts the toolkit: once, before any window. Debugging back doors of the toolkit stay shut, the program's
/// style sheets, pictures and object types are known afterwards. `assets` is the folder of forms, style
/// sheets and icons. False if there is no display. Throws PlatformError if a style sheet is missing or
/// broken.
[[nodiscard]] bool StartToolkit(const std::string& assets);

}  // namespace kivandra::gtk
