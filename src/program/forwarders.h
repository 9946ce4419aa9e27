// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "browser/browser_frame.h"
#include "core/application.h"
#include "core/session_grant.h"
#include "core/update_check.h"
#include "filter/gate_shell.h"
#include "frame/frm_main.h"
#include "panel/panel_frame.h"

namespace kivandra {

// Each forwarder answers what a lower room asks of a higher one, in the lower room's words, and decides
// nothing. Before the frame is made there is nothing to ask: every call then throws
// PlatformError(kObjectNotSet).

/// Where the forwarders find the frame; empty until the program has made it.
struct FrameLink {
  frmMain* frame = nullptr;
  [[nodiscard]] frmMain& Get() const;
};

class GateFrameForwarder : public GateFrame {
 public:
  explicit GateFrameForwarder(const FrameLink& link) : link_(link) {}
  void SetLockEnabled(bool enabled) override;
  void SetCaption(const std::string& caption) override;
  void Logo_Animate() override;
  void Logo_AnimateStop() override;
  [[nodiscard]] std::string TheAddressText() const override;
  [[nodiscard]] bool StartUpEnabled() const override;

 private:
  const FrameLink& link_;
};

class BrowserFrameForwarder : public BrowserFrame {
 public:
  explicit BrowserFrameForwarder(const FrameLink& link) : link_(link) {}
  void Logo_Animate() override;
  void Logo_AnimateStop() override;
  void ShowStillLogo() override;
  void tileme() override;
  void cascade() override;
  void mnuEditCopy_Click() override;
  ComboBox& TheAddress() override;
  StatusBar& Status() override;
  BarControl& BonusBar() override;
  [[nodiscard]] Twips ScaleWidth() const override;
  [[nodiscard]] Twips ScaleHeight() const override;
  [[nodiscard]] std::shared_ptr<frmBrowser> ActiveForm() const override;
  void SetLastDeactivated(std::weak_ptr<frmBrowser> window) override;
  std::shared_ptr<frmBrowser> NewBrowser() override;
  void BrowserUnloaded(const frmBrowser& window) override;

 private:
  const FrameLink& link_;
};

class ApplicationWindowsForwarder : public ApplicationWindows {
 public:
  explicit ApplicationWindowsForwarder(const FrameLink& link) : link_(link) {}
  void LoadFrame() override;
  void SetFrameVisible(bool visible) override;
  WebBrowser& ActiveBrowser() override;
  BrowserWindow NewBrowser() override;

 private:
  const FrameLink& link_;
};

class PanelFrameForwarder : public PanelFrame {
 public:
  explicit PanelFrameForwarder(const FrameLink& link) : link_(link) {}
  StatusBar& Status() override;

 private:
  const FrameLink& link_;
};

class UpdateWindowsForwarder : public UpdateWindows {
 public:
  explicit UpdateWindowsForwarder(const FrameLink& link) : link_(link) {}
  [[nodiscard]] bool FrameStands() const override;
  void SetFrameCaption(const std::string& caption) override;
  void UnloadActiveChild() override;

 private:
  const FrameLink& link_;
};

class SessionGrantForwarder : public SessionGrant {
 public:
  [[nodiscard]] bool SessionAllowPending() const override;
  void ClearSessionAllowPending() override;
  void AllowBlockedURL() override;
};

}  // namespace kivandra
