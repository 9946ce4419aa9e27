// SPDX-License-Identifier: GPL-3.0-or-later
// The commands of the menus Tools and Help, and the windows that they open.
#include <algorithm>
#include <utility>

#include "core/core_values.h"
#include "core/site_page.h"
#include "frame/banner_free.h"
#include "frame/frm_main.h"
#include "frame/frm_tip.h"
#include "platform/timer.h"
#include "support/attempt.h"

namespace kivandra {

void frmMain::Start(const char* commandLine) { services_.shell.Shell(commandLine, kNormalFocus); }

void frmMain::mnuCalc_Click() {
  // kept on purpose: of all outside programs this one alone tells that it is not there.
  try {
    Start("calc.exe");
  } catch (const PlatformError& error) {
    TellError(error);
  }
}

void frmMain::TellError(const PlatformError& error) {
  services_.boxes.MsgBox(std::to_string(error.Number()) + " - " + error.what());
}

void frmMain::mnuTip_Click() {
  if (!TipOpen) {
    ShowTip();
  }
}

/// kept on purpose: this one does not ask whether a tip is open already.
void frmMain::timerTips_Timer() {
  attempt([&] { ShowTip(); });
  TipOpen = true;
  attempt([&] { TimerOf("timerTips").SetEnabled(false); });
}

void frmMain::ShowTip() {
  const auto tip = frmTip::Create(services_.forms, [this](const FormEvents& window) { LetGo(window); });
  Hold(tip);
  tip->Window().SetVisible(true);
}

void frmMain::ShowBannerFree(const std::string& ending, const std::string& path) {
  const auto window = BannerFree::Create(services_.forms, [this](const FormEvents& gone) { LetGo(gone); });
  Hold(window);
  window->Show(ending, SitePage(path));
}

void frmMain::Hold(std::shared_ptr<FormEvents> window) { held_.push_back(std::move(window)); }

void frmMain::LetGo(const FormEvents& window) {
  held_.erase(std::remove_if(held_.begin(), held_.end(),
                             [&window](const auto& each) { return each.get() == &window; }),
              held_.end());
}

}  // namespace kivandra
