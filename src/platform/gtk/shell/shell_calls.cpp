// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/shell/shell_calls.h"

#include "platform/platform_error.h"

namespace kivandra::gtk {

void GtkShellCalls::Shell(const std::string& commandLine, int /*windowStyle*/) {
  throw PlatformError(kInvalidCall, "There is no program for " + commandLine);
}

void GtkShellCalls::SendKeys(const std::string& /*keys*/) {}

}  // namespace kivandra::gtk
