// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "platform/gtk/shell/internet_options.h"
#include "platform/shell_calls.h"

namespace kivandra::gtk {

class FormLoader;

/// Outside programs as the desktop knows them, and a window of our own for the system's Internet options.
///
/// Known command lines: "notepad.exe", "Wordpad", "calc.exe", "sndvol32.exe",
/// "rundll32.exe shell32.dll,Control_RunDLL inetcpl.cpl,,N" with the number of a page, and the full path of
/// the file "update.exe" beside the program. Nothing else is ever started. The window style is the started
/// program's own affair: no desktop here lets one program show another's window minimised.
class GtkShellCalls : public ShellCalls {
 public:
  GtkShellCalls(const FormLoader& forms, PictureChoice pictures);
  ~GtkShellCalls() override;
  GtkShellCalls(const GtkShellCalls&) = delete;
  GtkShellCalls& operator=(const GtkShellCalls&) = delete;

  void Shell(const std::string& commandLine, int windowStyle) override;
  /// Keys go to the Internet options while they are open; "^{f}" opens the find bar of the page that has the
  /// focus; every other key is lost.
  void SendKeys(const std::string& keys) override;

 private:
  void OpenOptions(int page);

  const FormLoader& forms_;
  PictureChoice pictures_;
  std::shared_ptr<InternetOptions> options_;  // null while it is closed
};

}  // namespace kivandra::gtk
