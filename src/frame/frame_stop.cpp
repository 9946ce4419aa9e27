// SPDX-License-Identifier: GPL-3.0-or-later
// The frame's closing: nothing here can stop it, and every error is passed over.
#include <algorithm>

#include "core/core_values.h"
#include "core/program_sound.h"
#include "frame/frm_main.h"
#include "platform/timer.h"
#include "support/attempt.h"

namespace kivandra {

void frmMain::Form_QueryUnload(bool& /*cancel*/, UnloadMode /*mode*/) { MDIForm_QueryUnload(); }

void frmMain::MDIForm_QueryUnload() {
  const auto form = form_;
  closing_ = true;
  // 1.
  attempt([&] {
    PlayProgramSound(services_.registry, services_.sound, services_.system, "shutdowninprocess.wav");
  });
  // 2.
  attempt([&] { TimerOf("CloseMe").SetEnabled(true); });
  // 3. The frame stays while the sound plays, and its pages go on working. A second close request comes in
  // here and waits its own turn; it may well take the frame away.
  attempt([&] {
    while (form->Loaded() && TimerOf("CloseMe").Enabled()) {
      services_.events.WaitForEvents();
    }
  });
  // 4.
  ClearBrowserSession();
  // 5.
  CloseProgram();
}

void frmMain::ClearBrowserSession() {
  attempt([&] { services_.session.InternetSetOptionA(INTERNET_OPTION_END_BROWSER_SESSION); });
}

void frmMain::CloseProgram() {
  if (InstanceMutex != 0) {
    attempt([&] { services_.instance.CloseHandle(InstanceMutex); });
  }
  InstanceMutex = 0;
  ReleaseToolsAndCloseWindows();
}

void frmMain::ReleaseToolsAndCloseWindows() {
  const auto release = [this](const char* band, const char* tool) {
    attempt([&] { BonusBar().Bands(band).Tools(tool).SetCustom(nullptr); });
  };
  release("Bonus Bar", "AddressBar");
  release("MainBar", "Spacer");
  release("MainBar", "LogoBox");
  release("MainBar", "Banner");

  const auto windows = services_.forms.Loaded();
  std::for_each(windows.rbegin(), windows.rend(), [this](const auto& window) {
    // The frame itself is on its way out already: it goes when this handler returns.
    if (window != form_) {
      attempt([&] { window->Unload(); });
    }
  });
}

void frmMain::Form_Unload() {
  Keyboard.reset();
  attempt([&] { brwBanner().SetEvents(nullptr); });
  if (form_) {
    form_->SetEvents(nullptr);
  }
}

}  // namespace kivandra
