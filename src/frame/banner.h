// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>

#include "platform/web_browser.h"

namespace kivandra {

class frmMain;

/// What `brwBanner` tells the frame. A banner's own pages stay in the banner; a click on anything else opens
/// its target in the window that the child is reading, where the gate judges it. No handler throws
/// PlatformError.
class Banner : public WebBrowserEvents {
 public:
  /// The frame outlives the banner.
  explicit Banner(frmMain& frame) : frame_(frame) {}

  void BeforeNavigate2(std::shared_ptr<Navigation> navigation) override;
  void NewWindow2(WebBrowser*& ppDisp, bool& Cancel) override;
  void StatusTextChange(const std::string& Text) override;

  // kept on purpose: whatever else happens in the banner concerns nobody.
  void NavigateComplete2(PageFrame& /*pDisp*/, const std::string& /*URL*/) override {}
  void DocumentComplete(PageFrame& /*pDisp*/, const std::string& /*URL*/) override {}
  void DownloadBegin() override {}
  void DownloadComplete() override {}
  void TitleChange(const std::string& /*Text*/) override {}
  void CommandStateChange(long /*Command*/, bool /*Enable*/) override {}
  void OnQuit() override {}
  void OnVisible(bool /*Visible*/) override {}
  void WindowSetLeft(long /*Left*/) override {}
  void WindowSetTop(long /*Top*/) override {}
  void WindowSetWidth(long /*Width*/) override {}
  void WindowSetHeight(long /*Height*/) override {}

 private:
  frmMain& frame_;
};

}  // namespace kivandra
