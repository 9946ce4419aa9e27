// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>

#include "browser/quiet_browser_events.h"
#include "panel/panel_frame.h"
#include "platform/form.h"

namespace kivandra {

/// A bare window with a page and no filter: whatever it is led to loads, and no visit is recorded. What
/// protects it is that the only road to it leads through the password.
///
/// Every handler goes on with its next step after a step that fails. The window may close inside any of them;
/// the object stays until its owner lets go of it, and opens a new window when it is shown again.
class BareBrowser : public FormEvents, private QuietBrowserEvents {
 public:
  ~BareBrowser() override;
  BareBrowser(const BareBrowser&) = delete;
  BareBrowser& operator=(const BareBrowser&) = delete;

  /// Shows the window, in front; loads it first if it is not there. Throws PlatformError if it can't be
  /// loaded.
  void Show();
  [[nodiscard]] bool Loaded() const { return form_ && form_->Loaded(); }
  /// The page, as long as the window is loaded; throws PlatformError if it is not.
  [[nodiscard]] WebBrowser& brwWebBrowser() const;

  void Form_Activate() override;
  void Form_Deactivate() override;
  void Form_Resize() override;
  void Form_Unload() override;

 protected:
  BareBrowser(std::string formName, Forms& forms, PanelFrame& frame);
  /// `FraSep` along the top, the page below it.
  virtual void LayOut(Form& form);

 private:
  void Form_Load();
  void BeforeNavigate2(std::shared_ptr<Navigation> navigation) override;
  void DownloadComplete() override;
  void TitleChange(const std::string& Text) override;
  void StatusTextChange(const std::string& Text) override;
  void OnQuit() override;
  void OnVisible(bool Visible) override;

  std::string formName_;
  Forms& forms_;
  PanelFrame& frame_;
  std::shared_ptr<Form> form_;
};

/// Where the log viewer shows a recorded page.
class parentbrowse : public BareBrowser {
 public:
  parentbrowse(Forms& forms, PanelFrame& frame) : BareBrowser("parentbrowse", forms, frame) {}
};

/// The same window with a skin. kept on purpose: nothing makes or shows it; the panel's help is a control of
/// the panel that bears the same name.
class Help : public BareBrowser {
 public:
  Help(Forms& forms, PanelFrame& frame) : BareBrowser("Help", forms, frame) {}

 protected:
  void LayOut(Form& form) override;
};

}  // namespace kivandra
