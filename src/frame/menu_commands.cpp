// SPDX-License-Identifier: GPL-3.0-or-later
// The commands that the menus, the tools and other windows call by their names.
#include "core/program_files.h"
#include "filter/filter_values.h"
#include "frame/frm_main.h"
#include "hosts.h"
#include "support/attempt.h"

namespace kivandra {

void frmMain::Logo_Animate() { WebBrowser2().Navigate(ProgramFile(services_.system, "smile.gif")); }

void frmMain::Logo_AnimateStop() { WebBrowser2().Stop(); }

void frmMain::ShowStillLogo() { WebBrowser2().Navigate(ProgramFile(services_.system, "smilestop.jpg")); }

void frmMain::cascade() { MDIClient().SendMessageA(WM_MDICASCADE, 0, 0); }

void frmMain::tileme() { MDIClient().SendMessageA(WM_MDITILE, 1, 1); }

void frmMain::mnuEditCopy_Click() {
  attempt([&] { ActiveChild().brwWebBrowser().ExecWB(OLECMDID_COPY, 0); });
}

void frmMain::mnuFileNew_Click() {
  services_.application.NewWindow();
  services_.application.Navigate(HomePage(services_.registry));
  BackBypass = false;
}

void frmMain::Menu_Click(const std::string& name) {
  if (name == "mnuFileNew") {
    mnuFileNew_Click();
  } else if (name == "mnuEditCopy") {
    mnuEditCopy_Click();
  }
}

void frmMain::Keyboard_KeyDown(std::int16_t& KeyCode, std::int16_t& /*Shift*/) {
  if (KeyCode == kKeyF1) {
    attempt([&] {
      ActiveChild().brwWebBrowser().Navigate("http://" + std::string(hosts::kProductSite) + "/help/");
    });
  }
}

}  // namespace kivandra
