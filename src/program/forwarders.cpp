// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/forwarders.h"

#include <utility>

#include "filter/filter_values.h"
#include "platform/platform_error.h"

namespace kivandra {

frmMain& FrameLink::Get() const {
  if (frame == nullptr) {
    throw PlatformError(kObjectNotSet, "Object variable not set");
  }
  return *frame;
}

void GateFrameForwarder::SetLockEnabled(bool enabled) {
  link_.Get().BonusBar().Bands("MainBar").Tools("Lock").SetEnabled(enabled);
}
void GateFrameForwarder::SetCaption(const std::string& caption) { link_.Get().Window().SetCaption(caption); }
void GateFrameForwarder::Logo_Animate() { link_.Get().Logo_Animate(); }
void GateFrameForwarder::Logo_AnimateStop() { link_.Get().Logo_AnimateStop(); }
std::string GateFrameForwarder::TheAddressText() const { return link_.Get().TheAddress().Text(); }
bool GateFrameForwarder::StartUpEnabled() const { return link_.Get().StartUpEnabled(); }

void BrowserFrameForwarder::Logo_Animate() { link_.Get().Logo_Animate(); }
void BrowserFrameForwarder::Logo_AnimateStop() { link_.Get().Logo_AnimateStop(); }
void BrowserFrameForwarder::ShowStillLogo() { link_.Get().ShowStillLogo(); }
void BrowserFrameForwarder::tileme() { link_.Get().tileme(); }
void BrowserFrameForwarder::cascade() { link_.Get().cascade(); }
void BrowserFrameForwarder::mnuEditCopy_Click() { link_.Get().mnuEditCopy_Click(); }
ComboBox& BrowserFrameForwarder::TheAddress() { return link_.Get().TheAddress(); }
StatusBar& BrowserFrameForwarder::Status() { return link_.Get().Status(); }
BarControl& BrowserFrameForwarder::BonusBar() { return link_.Get().BonusBar(); }
Twips BrowserFrameForwarder::ScaleWidth() const { return link_.Get().Window().ScaleWidth(); }
Twips BrowserFrameForwarder::ScaleHeight() const { return link_.Get().Window().ScaleHeight(); }
std::shared_ptr<frmBrowser> BrowserFrameForwarder::ActiveForm() const { return link_.Get().ActiveForm(); }
void BrowserFrameForwarder::SetLastDeactivated(std::weak_ptr<frmBrowser> window) {
  link_.Get().LastDeactivated = std::move(window);
}
std::shared_ptr<frmBrowser> BrowserFrameForwarder::NewBrowser() { return link_.Get().NewChild(); }
void BrowserFrameForwarder::BrowserUnloaded(const frmBrowser& window) { link_.Get().ChildUnloaded(window); }

void ApplicationWindowsForwarder::LoadFrame() { link_.Get().Load(); }
void ApplicationWindowsForwarder::SetFrameVisible(bool visible) { link_.Get().SetVisible(visible); }
WebBrowser& ApplicationWindowsForwarder::ActiveBrowser() {
  const auto child = link_.Get().ActiveForm();
  if (!child) {
    throw PlatformError(kObjectNotSet, "Object variable not set");
  }
  return child->brwWebBrowser();
}
BrowserWindow ApplicationWindowsForwarder::NewBrowser() {
  const auto child = link_.Get().NewChild();
  // The form shares the life of its window object.
  return {std::shared_ptr<Form>(child, &child->Window()), &child->brwWebBrowser()};
}

StatusBar& PanelFrameForwarder::Status() { return link_.Get().Status(); }

bool UpdateWindowsForwarder::FrameStands() const { return link_.Get().Stands(); }
void UpdateWindowsForwarder::SetFrameCaption(const std::string& caption) {
  link_.Get().Window().SetCaption(caption);
}
void UpdateWindowsForwarder::UnloadActiveChild() {
  const auto child = link_.Get().ActiveForm();
  if (!child) {
    throw PlatformError(kObjectNotSet, "Object variable not set");
  }
  child->Window().Unload();
}

bool SessionGrantForwarder::SessionAllowPending() const { return kivandra::SessionAllowPending; }
void SessionGrantForwarder::ClearSessionAllowPending() { kivandra::SessionAllowPending = false; }
void SessionGrantForwarder::AllowBlockedURL() {
  AllowedDomains[AllowedDomains.FirstEmptyRow()] = AskedURL.value_or(BlockedURL);
}

}  // namespace kivandra
