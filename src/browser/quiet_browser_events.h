// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>

#include "platform/web_browser.h"

namespace kivandra {

/// A receiver that listens to nothing: for browsers that care for a few events only. A page may open no other
/// window from here. Whether a navigation may load is for each window to say.
class QuietBrowserEvents : public WebBrowserEvents {
 public:
  void NavigateComplete2(PageFrame& /*pDisp*/, const std::string& /*URL*/) override {}
  void DocumentComplete(PageFrame& /*pDisp*/, const std::string& /*URL*/) override {}
  void DownloadBegin() override {}
  void DownloadComplete() override {}
  void TitleChange(const std::string& /*Text*/) override {}
  void StatusTextChange(const std::string& /*Text*/) override {}
  void CommandStateChange(long /*Command*/, bool /*Enable*/) override {}
  void NewWindow2(WebBrowser*& /*ppDisp*/, bool& Cancel) override { Cancel = true; }
  void OnQuit() override {}
  void OnVisible(bool /*Visible*/) override {}
  void WindowSetLeft(long /*Left*/) override {}
  void WindowSetTop(long /*Top*/) override {}
  void WindowSetWidth(long /*Width*/) override {}
  void WindowSetHeight(long /*Height*/) override {}
};

}  // namespace kivandra
