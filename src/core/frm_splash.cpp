// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/frm_splash.h"

#include <algorithm>
#include <charconv>

#include "core/core_values.h"
#include "core/unload_with_owner.h"
#include "platform/platform_error.h"
#include "platform/timer.h"

namespace kivandra {

namespace {

double NumericValue(const std::string& text) {
  double value = 0;
  std::from_chars(text.data(), text.data() + text.size(), value);
  return value;
}

}  // namespace

std::string LogDayNameOf(const std::string& date) {
  const auto first = date.find('/');
  const auto second = first == std::string::npos ? first : date.find('/', first + 1);
  if (second == std::string::npos) {
    throw PlatformError(kInvalidCall, "Invalid procedure call or argument");
  }
  std::string name =
      date.substr(0, first) + date.substr(first + 1, second - first - 1) + date.substr(second + 1);
  name.erase(0, std::min(name.find_first_not_of(' '), name.size()));
  return name;
}

std::string EngineVersion(const SystemInfo& system) {
  const DllVersionInfo version = system.DllGetVersion();
  return std::to_string(version.major) + "." + std::to_string(version.minor);
}

bool EngineIsRecentEnough(const std::string& version) {
  return !(NumericValue("5.50") > NumericValue(version));
}

frmSplash::frmSplash(Forms& forms, EventLoop& events, MessageBoxes& boxes, const SystemInfo& system)
    : forms_(forms), events_(events), boxes_(boxes), system_(system) {}

frmSplash::~frmSplash() { UnloadWithOwner(form_.get()); }

bool frmSplash::Show() {
  if (!Form_Load()) {
    return false;
  }
  form_->SetVisible(true);
  return true;
}

bool frmSplash::Form_Load() {
  form_ = forms_.Load("frmSplash");
  form_->SetEvents(this);
  auto& splashTimer = form_->Get<Timer>("SplashTimer");
  splashTimer.OnTimer([&splashTimer] { splashTimer.SetEnabled(false); });
  // 1. The day of the start names the log, also past midnight.
  LogDayName = LogDayNameOf(system_.FormatToday("d/m/yyyy"));
  // 2.
  WindowsDirectory = system_.GetWindowsDirectoryA();
  // 3. kept on purpose: read and not used.
  (void)system_.GetSystemDirectoryA();
  // 4. The engine check; the only deliberate way to end the process from here.
  if (!EngineIsRecentEnough(EngineVersion(system_))) {
    boxes_.MsgBox(
        "Microsoft Internet Explorer 5.5 or greater is required.  Please upgrade prior to usage of the "
        "Kivandra.",
        kMsgExclamation);
    events_.EndProgram();
    return false;
  }
  // 5.
  form_->SetVisible(true);
  return true;
}

void frmSplash::WaitForSplashTimer() {
  const auto form = form_;
  auto& splashTimer = form->Get<Timer>("SplashTimer");
  splashTimer.SetEnabled(true);
  while (form->Loaded() && splashTimer.Enabled()) {
    events_.WaitForEvents();
  }
}

void frmSplash::Unload() {
  if (form_) {
    form_->Unload();
  }
}

void frmSplash::Form_Unload() { form_->SetEvents(nullptr); }

}  // namespace kivandra
