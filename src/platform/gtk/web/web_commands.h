// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <webkit/webkit.h>

namespace kivandra::gtk {

/// Carries out a command of ExecWB on a view; throws PlatformError for a command that the engine does not
/// know.
void ExecuteCommand(WebKitWebView* view, int command, int option, int value);
/// What QueryStatusWB tells of a command; throws PlatformError for a command that the engine does not know.
[[nodiscard]] int CommandStatus(int command);

}  // namespace kivandra::gtk
