// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/shell_calls.h"

namespace kivandra::gtk {

/// Outside programs, as the desktop knows them.
class GtkShellCalls : public ShellCalls {
 public:
  void Shell(const std::string& commandLine, int windowStyle) override;
  void SendKeys(const std::string& keys) override;
};

}  // namespace kivandra::gtk
