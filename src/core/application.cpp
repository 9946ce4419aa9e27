// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/application.h"

#include <algorithm>

#include "core/core_values.h"
#include "core/frm_first_log.h"
#include "core/frm_splash.h"
#include "core/program_files.h"
#include "core/registry.h"
#include "core/settings.h"
#include "core/user_settings.h"
#include "hosts.h"
#include "platform/platform_error.h"
#include "support/attempt.h"

namespace kivandra {

namespace {

/// Shows the one box of a failed start.
void StartupErrorMessage(MessageBoxes& boxes, const PlatformError& error) {
  boxes.MsgBox(
      std::to_string(error.Number()) + " - email:" + std::string(hosts::kSupportAddress) + " " + error.what(),
      kMsgExclamation);
}

}  // namespace

std::string StoredHomePage(RegistryCalls& registry) {
  return GetSetting(registry, "Kivandra", "Home Page", "URL");
}

std::string HomePage(RegistryCalls& registry) {
  const std::string stored = StoredHomePage(registry);
  return stored.empty() ? std::string(hosts::kProductHome) : stored;
}

void Application::SetVisible(bool visible) {
  if (!visible) {
    visible_ = false;
    services_.windows.SetFrameVisible(false);
    return;
  }
  try {
    StartUp();
  } catch (const PlatformError& error) {
    StartupErrorMessage(services_.boxes, error);
  }
}

void Application::StartUp() {
  // 1.
  visible_ = true;
  // 2.
  ParentPassword = TextOf(ReadItem(services_.registry, "T_PW"));
  // 3. First run.
  frmFirstLog firstLog(services_.forms, services_.events, services_.boxes, services_.registry,
                       services_.system);
  if (ParentPassword.empty()) {
    firstLog.Show();
  }
  // 4. A first run stands here until the parent has made a password; otherwise the loop passes at once.
  for (;;) {
    ParentPassword = TextOf(ReadItem(services_.registry, "T_PW"));
    if (!ParentPassword.empty()) {
      services_.events.DoEvents();
      break;
    }
    services_.events.WaitForEvents();
  }
  // 5.
  PrepareSettings();
  // 6.
  frmSplash splash(services_.forms, services_.events, services_.boxes, services_.system);
  if (!splash.Show()) {
    return;
  }
  // 7.
  splash.WaitForSplashTimer();
  // 8.
  splash.Unload();
  // 9.
  services_.windows.LoadFrame();
  // 10.
  services_.windows.SetFrameVisible(true);
}

void Application::PrepareSettings() {
  cRegistry registry(services_.registry, services_.system.ProgramFileName());
  registry.SetClassKey(HKEY_CLASSES_ROOT);
  // What is read, expanded if it holds variables, is written back; what is missing becomes the empty string.
  const auto touch = [&registry](const std::string& section, const std::string& name) {
    registry.SetSectionKey(section);
    registry.CreateKey();
    registry.SetValueKey(name);
    registry.SetValueType(REG_SZ);
    const Variant value = registry.Value();
    registry.SetValue(value);
    return TextOf(value);
  };
  // Some 220 values, most of them there already: one write to the disk at the most.
  RegistryBatch batch(services_.registry);
  // 1.
  for (const std::string& name : SettingNames) {
    touch(kSettingsSection, name);
  }
  // 2.
  touch(kSettingsSection, "Installed");
  // 3. The default is not written back.
  SkinFile = touch(kSettingsSection, "skin");
  if (SkinFile.empty()) {
    SkinFile = ProgramFile(services_.system, kDefaultSkin);
  }
  // 4 and 5. The lists' slots.
  constexpr int kLastSlot = 100;
  for (const char* section : {kAllowedSection, kDisallowedSection}) {
    for (int slot = 0; slot <= kLastSlot; ++slot) {
      touch(section, std::to_string(slot));
    }
  }
  batch.Commit();
  // 6. kept on purpose: a second guard that can't be reached behind the wait for the password.
  if (TextOf(ReadItem(services_.registry, "T_PW")).empty()) {
    frmFirstLog firstLog(services_.forms, services_.events, services_.boxes, services_.registry,
                         services_.system);
    firstLog.ShowModal();
  }
}

void Application::Navigate(const std::string& Shortcut) {
  services_.windows.ActiveBrowser().Navigate(Shortcut);
}

void Application::NewWindow() {
  // The active child is looked at and not used; there may be none.
  attempt([&] { (void)services_.windows.ActiveBrowser(); });
  const BrowserWindow window = services_.windows.NewBrowser();
  const std::string homePage = StoredHomePage(services_.registry);
  window.brwWebBrowser->Navigate(homePage);
  window.form->SetVisible(true);
}

int Application::Children() const {
  const auto loaded = services_.forms.Loaded();
  return static_cast<int>(
      std::count_if(loaded.begin(), loaded.end(), [](const auto& each) { return each->MDIChild(); }));
}

}  // namespace kivandra
