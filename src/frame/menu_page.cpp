// SPDX-License-Identifier: GPL-3.0-or-later
// The commands of the menus Edit and View: they speak to the page in front.
#include "core/core_values.h"
#include "frame/frm_main.h"
#include "platform/timer.h"
#include "support/attempt.h"

namespace kivandra {

void frmMain::ExecOnChild(int command, int option) {
  // Held, since a dialog runs events and the window may go meanwhile.
  const auto child = HeldChild();
  child->brwWebBrowser().ExecWB(command, option);
}

void frmMain::mnuEditCopy_Click() {
  attempt([&] { ExecOnChild(OLECMDID_COPY, 0); });
}

void frmMain::mnuEditSelectall_Click() {
  attempt([&] { HeldChild()->Window().SetFocus(); });
  attempt([&] { ExecOnChild(OLECMDID_SELECTALL, 0); });
}

void frmMain::mnuEditFind_Click() {
  FindDialogOpen = true;
  attempt([&] { HeldChild()->brwWebBrowser().SetFocus(); });
  attempt([&] { services_.shell.SendKeys("^{f}"); });
  FindDialogOpen = false;
}

void frmMain::SetBrowserZoom(WebBrowser& browser, int level) {
  constexpr int kDontPrompt = 2;
  browser.ExecWB(OLECMDID_ZOOM, kDontPrompt, level);
}

void frmMain::ZoomChild(int level) {
  const auto child = HeldChild();
  SetBrowserZoom(child->brwWebBrowser(), level);
}

void frmMain::mnuImages_Click() {
  // The pictures' line in the list of the system's dialog.
  constexpr int kLinesDown = 45;
  constexpr int kTabsToOk = 2;
  const auto send = [this](const char* keys) { attempt([&] { services_.shell.SendKeys(keys); }); };
  // 1.
  attempt([&] { Start("rundll32.exe shell32.dll,Control_RunDLL inetcpl.cpl,,6"); });
  // 2.
  for (int line = 0; line < kLinesDown; ++line) {
    send("{DOWN}");
  }
  // 3. A blank flips the entry.
  send("( )");
  // 4.
  for (int tab = 0; tab < kTabsToOk; ++tab) {
    send("{TAB}");
  }
  // 5. A blank presses the button.
  send("( )");
  // 6. The page comes back with or without its pictures.
  attempt([&] { TimerOf("Refreshtimer").SetEnabled(true); });
}

void frmMain::Refreshtimer_Timer() {
  attempt([&] { TimerOf("Refreshtimer").SetEnabled(false); });
  attempt([&] { HeldChild()->brwWebBrowser().Refresh(); });
}

}  // namespace kivandra
