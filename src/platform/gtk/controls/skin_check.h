// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace kivandra::gtk {

/// Throws PlatformError unless the text is a skin: every colour that a dress needs, rules for its own windows
/// only, and no other file. It also refuses what would cost the toolkit its stack or its time: deep
/// parentheses, and colours that are made of each other in a circle or a great many times.
void CheckSkin(const std::string& css);

}  // namespace kivandra::gtk
