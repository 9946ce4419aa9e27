// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>

#include "browser/quiet_browser_events.h"

namespace kivandra {

class frmMain;

/// What `brwBanner` tells the frame. A banner's own pages stay in the banner; a click on anything else opens
/// its target in the window that the child is reading, where the gate judges it. No handler throws
/// PlatformError.
class Banner : public QuietBrowserEvents {
 public:
  /// The frame outlives the banner.
  explicit Banner(frmMain& frame) : frame_(frame) {}

  void BeforeNavigate2(std::shared_ptr<Navigation> navigation) override;
  void NewWindow2(WebBrowser*& ppDisp, bool& Cancel) override;
  void StatusTextChange(const std::string& Text) override;

 private:
  frmMain& frame_;
};

}  // namespace kivandra
