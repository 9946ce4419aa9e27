// SPDX-License-Identifier: GPL-3.0-or-later
// What other windows ask of the frame.
#include "core/private_profile.h"
#include "core/program_files.h"
#include "core/site_page.h"
#include "frame/frm_main.h"
#include "support/attempt.h"

namespace kivandra {

void frmMain::Logo_Animate() { WebBrowser2().Navigate(ProgramFile(services_.system, "smile.gif")); }

void frmMain::Logo_AnimateStop() { WebBrowser2().Stop(); }

void frmMain::ShowStillLogo() { WebBrowser2().Navigate(ProgramFile(services_.system, "smilestop.jpg")); }

void frmMain::cascade() { MDIClient().SendMessageA(WM_MDICASCADE, 0, 0); }

void frmMain::tileme() { MDIClient().SendMessageA(WM_MDITILE, 1, 1); }

void frmMain::MiniMizer() {
  for (const auto& window : services_.forms.Loaded()) {
    attempt([&] {
      if (window->MDIChild()) {
        window->SetWindowState(WindowState::Minimized);
      }
    });
  }
  MDIClient().SendMessageA(WM_MDIICONARRANGE, 0, 0);
}

void frmMain::LoadHTML(const std::string& URL) { HeldChild()->brwWebBrowser().Navigate(URL); }

void frmMain::ProfileSaveItem(const std::string& section, const std::string& key, const std::string& value,
                              const std::string& file) {
  (void)WritePrivateProfileStringA(services_.files, section, key, value, file);
}

void frmMain::Keyboard_KeyDown(std::int16_t& KeyCode, std::int16_t& /*Shift*/) {
  if (KeyCode == kKeyF1) {
    attempt([&] { LoadHTML(SitePage("/help/")); });
  }
}

}  // namespace kivandra
